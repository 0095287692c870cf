// SPDX-License-Identifier: MIT
#pragma once

#include "demo/pictures/Scenes.h"

namespace kestrin::demo {

/// The demo set on the stage: with the blade in, out and at rest, in a swing, and locked up.
[[nodiscard]] QPixmap TakeTryIn(const Place& place, const std::string& board);
[[nodiscard]] QPixmap TakeTry(const Place& place, const std::string& board);
[[nodiscard]] QPixmap TakeTrySwing(const Place& place, const std::string& board);
[[nodiscard]] QPixmap TakeTryLockup(const Place& place, const std::string& board);
/// The stage without any sound.
[[nodiscard]] QPixmap TakeTryEmpty(const Place& place, const std::string& board);

}  // namespace kestrin::demo
