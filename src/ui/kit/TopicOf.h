// SPDX-License-Identifier: MIT
#pragma once

#include "ui/kit/HelpContext.h"

class QWidget;

namespace kestrin::ui::kit {

/// The dynamic property that carries the help context number of a widget.
inline constexpr const char* kHelpContextProperty = "helpContext";

/// Gives the widget, and everything in it that has no number of its own, its help topic.
void SetHelpContext(QWidget& widget, HelpContext context);

/// The topic of the nearest of the widget and its parents that has one, up to and beyond the edge of a dialog;
/// `HelpContext::Overview` when none has, and for no widget at all.
[[nodiscard]] HelpContext TopicOf(const QWidget* widget);

}  // namespace kestrin::ui::kit
