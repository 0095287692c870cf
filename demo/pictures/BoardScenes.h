// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <string>

#include "demo/pictures/Scenes.h"

namespace kestrin::demo {

// What the window says of the board's contents, with the sheet that compares them.

/// The board holds the open set.
[[nodiscard]] QPixmap TakeBoardSame(const Place& place, const std::string& board);
/// It holds the set as it was some changes ago.
[[nodiscard]] QPixmap TakeBoardDiffers(const Place& place, const std::string& board);
/// The same, with nothing over the window.
[[nodiscard]] QPixmap TakeBoardChip(const Place& place, const std::string& board);
/// It holds sounds that nobody knows.
[[nodiscard]] QPixmap TakeBoardUnknown(const Place& place, const std::string& board);
/// A download that would change nothing.
[[nodiscard]] QPixmap TakeBoardHeld(const Place& place, const std::string& board);

}  // namespace kestrin::demo
