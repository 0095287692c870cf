// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "ui/kit/HelpContext.h"

class QWidget;

namespace kestrin::ui::kit {

/// What the help line says of a control: `text`, while the pointer is on it or it has the focus. To be called where the
/// control is made; the topic is that of what the control stands in.
void SetHelp(QWidget& control, const QString& text);

/// The same for a control that has a topic of its own, see `SetHelpContext`.
void SetHelp(QWidget& control, const QString& text, HelpContext context);

/// The widget is nothing but ground, on which the help line says what it says of the window: `PressF1()`.
void SetHelpOfGround(QWidget& ground);

/// The same for ground that has a topic of its own.
void SetHelpOfGround(QWidget& ground, HelpContext context);

/// Whether the widget is ground.
[[nodiscard]] bool IsGround(const QWidget& widget);

/// What the help line says of the widget; "" for nothing of its own.
[[nodiscard]] QString HelpTextOf(const QWidget& control);

/// What the help line says of the window and its ground.
[[nodiscard]] QString PressF1();

}  // namespace kestrin::ui::kit
