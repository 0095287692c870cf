// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <string>

#include "demo/pictures/Scenes.h"

namespace kestrin::demo {

// The panel of the acceleration sensor with the picture of what the board feels.

/// In the middle of the taps, with a suggestion so far.
[[nodiscard]] QPixmap TakeSensor(const Place& place, const std::string& board);
/// At the first swings.
[[nodiscard]] QPixmap TakeSensorSwings(const Place& place, const std::string& board);
/// When taps were no harder than swings.
[[nodiscard]] QPixmap TakeSensorAlike(const Place& place, const std::string& board);
/// With a board that does not tell.
[[nodiscard]] QPixmap TakeSensorSilent(const Place& place, const std::string& board);

}  // namespace kestrin::demo
