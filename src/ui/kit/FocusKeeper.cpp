// SPDX-License-Identifier: MIT
#include "ui/kit/FocusKeeper.h"

namespace kestrin::ui::kit {

void FocusKeeper::Take() {
  if (m_reasons++ == 0) m_before = m_window.focusWidget();
}

void FocusKeeper::GiveBack() {
  if (--m_reasons > 0 || m_before == nullptr) return;
  if (m_before->isEnabled() && m_before->isVisible()) m_before->setFocus();
}

}  // namespace kestrin::ui::kit
