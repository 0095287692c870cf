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
  /// Peaks are kept side by side, so that the processor can compare several at once.
  static constexpr std::size_t kLanes = 8;

  /// Looks at kBlock samples.
  void Look();

  /// By place between two samples, then by sample, the latest first.
  std::array<std::array<double, kReach>, kTimes - 1> m_filter{};
  /// The last samples of the block before, then the block.
  std::vector<double> m_samples;
  std::size_t m_filled = kReach;
  std::array<double, kBlock> m_between{};
  std::array<double, kLanes> m_peaks{};
};

}  // namespace kestrin::core::sound
