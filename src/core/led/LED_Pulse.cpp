// SPDX-License-Identifier: MIT
#include "led/LED_Pulse.h"

#include <algorithm>

#include "base/Numbers.h"
#include "led/LED_Driver.h"
#include "led/LevelCounts.h"

namespace kestrin::core::led {

bool LED_Pulse::IsTooLongForBoard() const {
  // Two bytes each.
  constexpr double kLongest = 65535;
  return base::RoundHalfEven(std::max({Ton, Toff, Trise, Tfall})) > kLongest;
}

void LED_Pulse::CalculateTimes(const LED_Driver& driver) {
  for (int channel = 1; channel <= driver.NrOfChannels && channel <= kChannels; ++channel) {
    Channel& counts = m_channels[Index(channel)];
    const LevelCounts low = CountsOf(driver, channel, counts.low);
    counts.tonLow = low.on;
    counts.toffLow = low.off;
    const LevelCounts high = CountsOf(driver, channel, counts.high);
    counts.tonHigh = high.on;
    counts.toffHigh = high.off;
  }
}

}  // namespace kestrin::core::led
