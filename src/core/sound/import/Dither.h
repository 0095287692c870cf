// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace kestrin::core::sound {

/// Makes samples of 16 bits. Rounding alone would add tones to quiet sounds, so noise as high as one step of the 16
/// bits (triangular, the same for every sound) is added first; but stretches of silence stay silent.
class Dither {
 public:
  /// `isExact`: samples that are whole numbers of 16 bits already stay as they are.
  Dither(double factor, bool isExact) : m_factor(factor * kFullScale), m_isExact(isExact) {}

  /// Appends the samples, multiplied and rounded. A few may wait for those behind them.
  void Add(std::span<const double> samples, std::vector<std::int16_t>& out);
  /// The sound has ended: appends what waited.
  void Finish(std::vector<std::int16_t>& out);

 private:
  static constexpr double kFullScale = 32768;
  /// So many samples of silence are a stretch of it: two thirds of a millisecond.
  static constexpr std::size_t kStretch = 32;

  /// Noise of -1 .. 1, mostly in between.
  [[nodiscard]] double Noise();
  [[nodiscard]] std::int16_t Rounded(double sample);

  double m_factor;
  bool m_isExact;
  /// How many samples of silence wait; kStretch within a stretch, where none does.
  std::size_t m_silent = 0;
  std::uint64_t m_state = 1;
};

}  // namespace kestrin::core::sound
