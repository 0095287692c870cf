// SPDX-License-Identifier: MIT
#pragma once

#include "demo/Synth.h"

namespace kestrin::demo {

inline constexpr int kClashes = 5;

/// Blade against blade: a bright burst, a body that rings off tune, a thump beneath, sparks after it.
/// `number` 1 .. kClashes, from heavy to light.
[[nodiscard]] Sound Clash(int number);

}  // namespace kestrin::demo
