// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

namespace kestrin::demo_test {

using Samples = std::span<const std::int16_t>;

inline constexpr double kRate = 48000.0;

/// The part of a sound between two moments in seconds.
inline Samples Between(Samples samples, double from, double to) {
  const auto first = static_cast<std::size_t>(from * kRate);
  const auto last = std::min(static_cast<std::size_t>(to * kRate), samples.size());
  return samples.subspan(first, last - first);
}

/// Loudness: the root of the mean square.
inline double Rms(Samples samples) {
  double sum = 0.0;
  for (const double sample : samples) sum += sample * sample;
  return std::sqrt(sum / static_cast<double>(samples.size()));
}

inline int Peak(Samples samples) {
  int peak = 0;
  for (const int sample : samples) peak = std::max(peak, std::abs(sample));
  return peak;
}

/// Amplitude of the part of the sound that turns at exactly `hz`: one line of the Fourier transform.
inline double Line(Samples samples, double hz) {
  const std::complex<double> step = std::polar(1.0, -2.0 * 3.14159265358979324 * hz / kRate);
  std::complex<double> turn = 1.0;
  std::complex<double> sum = 0.0;
  for (const double sample : samples) {
    sum += sample * turn;
    turn *= step;
  }
  return 2.0 * std::abs(sum) / static_cast<double>(samples.size());
}

/// Pitch in Hz between `lowest` and `highest`: the shortest shift by which the sound is about as like itself as by any.
inline double Pitch(Samples samples, double lowest, double highest) {
  const auto shortest = static_cast<std::size_t>(kRate / highest);
  const auto longest = static_cast<std::size_t>(kRate / lowest);
  std::vector<double> likeness;
  for (std::size_t lag = shortest; lag <= longest; ++lag) {
    double sum = 0.0;
    for (std::size_t i = 0; i + longest < samples.size(); ++i) sum += double{1} * samples[i] * samples[i + lag];
    likeness.push_back(sum);
  }
  const double most = *std::max_element(likeness.begin(), likeness.end());
  // Twice the shift is about as good as once, which would be an octave too low.
  std::size_t i = 1;
  while (i + 1 < likeness.size() &&
         !(likeness[i] >= 0.85 * most && likeness[i] >= likeness[i - 1] && likeness[i] >= likeness[i + 1])) {
    ++i;
  }
  return kRate / static_cast<double>(shortest + i);
}

}  // namespace kestrin::demo_test
