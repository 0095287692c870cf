#include "led/LED_Pulse.h"

#include "led/LED_Driver.h"
#include "led/Scaling.h"

namespace kestrin::led {

void LED_Pulse::CalculateTimes(const LED_Driver& driver) {
  // A level is a share of the channel's full luminance.
  const auto luminance = [&](int channel, std::int16_t level) {
    return Scale<std::int32_t>(level, driver.GetMaxLum(channel), 255);
  };
  for (int channel = 1; channel <= driver.NrOfChannels && channel <= kChannels; ++channel) {
    Channel& counts = m_channels[Index(channel)];
    const std::int32_t low = luminance(channel, counts.low);
    counts.tonLow = driver.GetTon(SetType::Luminance, channel, low);
    counts.toffLow = driver.GetToff(SetType::Luminance, channel, low);
    const std::int32_t high = luminance(channel, counts.high);
    counts.tonHigh = driver.GetTon(SetType::Luminance, channel, high);
    counts.toffHigh = driver.GetToff(SetType::Luminance, channel, high);
  }
}

}  // namespace kestrin::led
