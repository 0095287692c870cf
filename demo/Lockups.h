// SPDX-License-Identifier: MIT
#pragma once

#include "demo/Synth.h"

namespace kestrin::demo {

inline constexpr int kLockups = 2;

/// Blade held against blade: crackling over a hum that trembles; goes round without a seam. `number` 1 .. kLockups.
[[nodiscard]] Sound Lockup(int number);

}  // namespace kestrin::demo
