// SPDX-License-Identifier: MIT
#include "led/ColorLevels.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "led/LED_Driver.h"

namespace kestrin::core::led {

PulseContent::Levels LevelsOfColor(Color color, const LED_Driver& driver, bool fidelity, PulseContent::Levels levels) {
  const auto [R, G, B] = SysToRGB(color, {});
  for (const auto& [die, component] : {std::pair{kRed, R}, std::pair{kGreen, G}, std::pair{kBlue, B}}) {
    const int channel = driver.FindColor(die);
    if (channel == 0) continue;
    // The dies that a colour does not use do not dim the others.
    const std::int16_t level =
        fidelity
            ? driver.ConvertLuminanceToRGB(die, driver.ConvertRGBtoLuminance(kRed, component, R == 0, G == 0, B == 0))
            : component;
    levels[static_cast<std::size_t>(channel) - 1] = std::min(level, kFullLevel);
  }
  return levels;
}

}  // namespace kestrin::core::led
