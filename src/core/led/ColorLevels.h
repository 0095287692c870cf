// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "led/Color.h"
#include "led/PulseContent.h"

namespace kestrin::core::led {

class LED_Driver;

/// The highest level of a channel.
inline constexpr std::int16_t kFullLevel = 255;

/// The levels that show a picked colour: `levels` with those of the red, the green and the blue channel replaced by the
/// colour's components; with `fidelity` lowered so that equal components give equal luminance. Other channels keep
/// theirs. `color` is no system colour.
[[nodiscard]] PulseContent::Levels LevelsOfColor(Color color, const LED_Driver& driver, bool fidelity,
                                                 PulseContent::Levels levels);

}  // namespace kestrin::core::led
