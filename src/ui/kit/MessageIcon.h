// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QPalette>
#include <QStyle>

namespace kestrin::ui::kit {

/// The sign of a message box (information, question, warning, error), or of what went well (SP_DialogApplyButton), in
/// the line style of the program's pictures; null for every other picture.
[[nodiscard]] QIcon MessageIcon(QStyle::StandardPixmap picture, const QPalette& palette);

}  // namespace kestrin::ui::kit
