// SPDX-License-Identifier: MIT
#include "demo/Voice.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "demo/Finish.h"

namespace kestrin::demo {

std::vector<std::int16_t> InVoice(std::span<const std::int16_t> samples, bool loops, const Voice& voice) {
  constexpr double kFullGrowl = 4.0;
  const std::size_t size = samples.size();
  const std::size_t length = 2 * static_cast<std::size_t>(static_cast<double>(size) / voice.pitch / 2.0);
  // A loop must end where it begins, so it is stretched to the length exactly.
  const double step = static_cast<double>(size) / static_cast<double>(length);
  Sound sound(length);
  double peak = 0.0;
  for (std::size_t i = 0; i < length; ++i) {
    const double at = static_cast<double>(i) * step;
    const auto before = static_cast<std::size_t>(at);
    const std::int16_t next = before + 1 < size ? samples[before + 1] : loops ? samples[0] : std::int16_t{0};
    const double share = at - static_cast<double>(before);
    const double value = (samples[before] + share * (next - samples[before])) / kFinishedPeak;
    // What is loud is pressed together, which adds the harmonics that growl.
    sound[i] = voice.growl > 0.0 ? std::tanh(kFullGrowl * voice.growl * value) : value;
    peak = std::max(peak, std::abs(sound[i]));
  }
  std::vector<std::int16_t> result(length);
  std::transform(sound.begin(), sound.end(), result.begin(),
                 [peak](double value) { return FinishedSample(value / peak); });
  return result;
}

}  // namespace kestrin::demo
