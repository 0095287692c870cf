// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "led/LED_Driver.h"
#include "led/Scaling.h"

namespace kestrin::core::led {

/// What a level of one channel means to the board.
struct LevelCounts {
  /// The level's share of the channel's full luminance.
  std::int32_t luminance = 0;
  /// The on/off counts.
  std::int32_t on = 0;
  std::int32_t off = 0;
};

/// The counts of a level (0 .. 255) of a channel; levels outside give the counts at the ends.
[[nodiscard]] inline LevelCounts CountsOf(const LED_Driver& driver, int channel, std::int32_t level) {
  const auto luminance = Scale<std::int32_t>(level, driver.GetMaxLum(channel), 255);
  return {luminance, driver.GetTon(SetType::Luminance, channel, luminance),
          driver.GetToff(SetType::Luminance, channel, luminance)};
}

}  // namespace kestrin::core::led
