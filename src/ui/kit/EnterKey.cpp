// SPDX-License-Identifier: MIT
#include "ui/kit/EnterKey.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QToolButton>

namespace kestrin::ui::kit {

bool PressByEnter(const QWidget& window, const QKeyEvent& key) {
  auto* const button = qobject_cast<QAbstractButton*>(window.focusWidget());
  const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
  const bool presses = qobject_cast<QPushButton*>(button) != nullptr || qobject_cast<QToolButton*>(button) != nullptr;
  if (!isEnter || !presses) return false;
  if (!key.isAutoRepeat()) button->click();
  return true;
}

}  // namespace kestrin::ui::kit
