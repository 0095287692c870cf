// SPDX-License-Identifier: MIT
#pragma once

#include "demo/Synth.h"

namespace kestrin::demo {

inline constexpr int kSwings = 6;

/// The blade flies past: hum and air swell, their pitch falls while it passes. `number` 1 .. kSwings, from a slow arc
/// to a quick flick.
[[nodiscard]] Sound Swing(int number);

}  // namespace kestrin::demo
