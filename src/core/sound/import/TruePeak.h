// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <span>
#include <vector>

namespace kestrin::core::sound {

/// The highest peak of a sound between its samples, as a loudspeaker would play it: the sound is looked at four times
/// as finely (ITU-R BS.1770, annex 2), by a filter of 49 points. Silence counts before and behind it.
class TruePeak {
 public:
  TruePeak();

  /// The next samples, all of them finite.
  void Add(std::span<const double> samples);
  /// The sound has ended: its peak, full scale being 1. Nothing may follow.
  [[nodiscard]] double Finish();

 private:
  /// How many times as finely.
  static constexpr std::size_t kTimes = 4;
  /// Samples on which a point between two of them depends.
  static constexpr std::size_t kReach = 12;
  static constexpr std::size_t kBlock = 512;

  /// Looks at kBlock samples.
  void Look();

  [[nodiscard]] static float HighestOf(const float* values, std::size_t count);

  /// By place between two samples, then by sample, the latest first.
  std::array<std::array<float, kReach>, kTimes - 1> m_filter{};
  /// How much higher than the samples around it a point between two of them can be.
  float m_most = 1;
  /// The last samples of the block before, then the block. Half the precision is still far more than a peak needs.
  std::vector<float> m_samples;
  std::size_t m_filled = kReach;
  std::array<float, kBlock> m_between{};
  float m_peak = 0;
};

}  // namespace kestrin::core::sound
