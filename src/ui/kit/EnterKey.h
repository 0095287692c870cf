// SPDX-License-Identifier: MIT
#pragma once

class QKeyEvent;
class QWidget;

namespace kestrin::ui::kit {

/// Outside of dialogs Qt's buttons know the Space key alone: presses the window's button that has the keyboard when the
/// key is Enter, once however long it is held. False when the key is another one or no button has the keyboard.
[[nodiscard]] bool PressByEnter(const QWidget& window, const QKeyEvent& key);

}  // namespace kestrin::ui::kit
