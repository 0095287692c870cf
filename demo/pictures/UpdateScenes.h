// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>

namespace kestrin::demo {

/// The update dialog: at work, at its good end, at a bad end with a long text, and with the question's two buttons.
[[nodiscard]] QPixmap TakeUpdating();
[[nodiscard]] QPixmap TakeUpdated();
[[nodiscard]] QPixmap TakeUpdateFailed();
[[nodiscard]] QPixmap TakeUpdateQuestion();

}  // namespace kestrin::demo
