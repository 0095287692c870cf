// SPDX-License-Identifier: MIT
#include "ui/sound/DriveList.h"

namespace kestrin::ui::sound {

void DriveList::showPopup() {
  emit opening();
  QComboBox::showPopup();
}

}  // namespace kestrin::ui::sound
