// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

namespace kestrin::support {

/// The coded stream of a sound, worked out sample by sample as the format is described and without any regard to speed:
/// what the real coder must give bit by bit. `samples` are the whole file's, the first included.
inline std::vector<std::uint8_t> ReferenceStream(std::vector<std::int16_t> samples, int peak, int volume) {
  const std::size_t count = samples.size();
  if (samples.size() % 2 != 0) samples.push_back(0);
  std::vector<std::uint8_t> stream(samples.size() / 2 * 3, 0);
  const double f = (999.0 / peak) * volume / 100;
  const auto sample = [&](std::size_t i) { return static_cast<double>(samples[i - 1]); };
  for (std::size_t i = 3; i <= count; i += 2) {
    const std::size_t k = i / 2;
    const double a = sample(i - 1) * f;
    const double b = std::nearbyint(sample(i) * f);
    const long aDiv4 = static_cast<long>(std::nearbyint(a)) / 4;
    const long wholeB = static_cast<long>(b);
    long middle = static_cast<long>(std::nearbyint(std::fabs(a - static_cast<double>(aDiv4 * 4)) * 4));
    middle += std::labs(wholeB % 4);
    if (a < 0) middle += 128;
    if (b < 0) middle += 64;
    stream[k * 3] = static_cast<std::uint8_t>(std::labs(aDiv4));
    stream[k * 3 + 1] = static_cast<std::uint8_t>(middle);
    stream[k * 3 + 2] = static_cast<std::uint8_t>(std::labs(wholeB) / 4);
  }
  return stream;
}

/// What a board plays of a coded stream: for every three bytes two values from -1023 to 1023 or little beyond.
inline std::vector<int> DecodeStream(std::span<const std::uint8_t> stream) {
  std::vector<int> values;
  for (std::size_t at = 0; at + 3 <= stream.size(); at += 3) {
    const int middle = stream[at + 1];
    const int first = 4 * stream[at] + ((middle & 0x3F) >> 2);
    const int second = 4 * stream[at + 2] + (middle & 3);
    values.push_back(middle & 128 ? -first : first);
    values.push_back(middle & 64 ? -second : second);
  }
  return values;
}

}  // namespace kestrin::support
