// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace kestrin::core::sound {

/// A stretch of a sound, in samples.
struct Stretch {
  std::uint64_t begin = 0;
  /// Behind the last one.
  std::uint64_t end = 0;

  [[nodiscard]] std::uint64_t Length() const { return end - begin; }
  friend bool operator==(const Stretch&, const Stretch&) = default;
};

/// Finds where a sound begins and ends between silence. What counts as silence hangs on the sound's peak, which is only
/// known at its end; so where each height is reached first and last is kept, in steps of less than 1 dB.
class SoundBounds {
 public:
  /// The next samples, all of them finite.
  void Add(std::span<const double> samples);

  /// Samples so far.
  [[nodiscard]] std::uint64_t Count() const { return m_count; }
  /// The highest of them, full scale being 1.
  [[nodiscard]] double Peak() const { return m_peak; }

  /// What stays when silence at both ends goes: from 5 ms before the first sample that is louder than a thousandth of
  /// the peak (less than the board's ten bits can hold) to 20 ms behind the last. An end stays as it is where less than
  /// 10 ms would go. All of it when there is nothing but silence.
  [[nodiscard]] Stretch WithoutSilence() const;

 private:
  static constexpr std::size_t kHeights = 512;

  struct Reached {
    std::uint64_t first;
    /// Behind the last one; 0 when it was never reached.
    std::uint64_t end = 0;
  };

  [[nodiscard]] static std::size_t HeightOf(double magnitude);

  std::array<Reached, kHeights> m_reached{};
  std::uint64_t m_count = 0;
  double m_peak = 0;
};

}  // namespace kestrin::core::sound
