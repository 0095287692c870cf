// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kestrin::demo {

/// A sound while it is made: one number a sample, 48,000 a second, any level; Finish() brings it to size.
using Sound = std::vector<double>;

inline constexpr double kSampleRate = 48000.0;
inline constexpr double kTurn = 6.283185307179586;

/// Samples in that many seconds.
[[nodiscard]] std::size_t SamplesIn(double seconds);

/// White noise, the same on every machine for the same seed.
class Noise {
 public:
  /// `seed` is not 0: nothing but zeros would follow.
  explicit Noise(std::uint32_t seed) : m_state(seed) {}
  /// The next number, -1 up to 1.
  [[nodiscard]] double Next();
  /// The next number, 0 up to 1.
  [[nodiscard]] double NextPositive() { return (Next() + 1.0) / 2.0; }

 private:
  std::uint32_t m_state;
};

/// Counts the turns of a tone whose pitch may change from sample to sample without a click.
class Oscillator {
 public:
  explicit Oscillator(double phase = 0.0) : m_phase(phase) {}
  /// The phase in turns, 0 up to 1, of this sample; the next one is `hz` further.
  [[nodiscard]] double Advance(double hz);

 private:
  double m_phase;
};

/// A tone and its harmonics: the sum of amplitudes[k] * sin((k + 1) * phase). `phase` in turns. The caller keeps
/// amplitudes.size() times the pitch below 24,000 Hz, so nothing folds back.
[[nodiscard]] double HarmonicSum(double phase, std::span<const double> amplitudes);

/// Amplitudes of `count` harmonics that fall gently: 1/k, and from harmonic number `brightness` on ever faster.
[[nodiscard]] std::vector<double> GentleHarmonics(std::size_t count, double brightness);

/// A filter with two poles whose cutoff may move with every sample.
class StateVariableFilter {
 public:
  struct Bands {
    double low;
    double band;
    double high;
  };
  /// `cutoff` in Hz, below 24,000; `resonance` 0.5 (broad) and up (ringing). `band` has level 1 at the cutoff.
  [[nodiscard]] Bands Process(double in, double cutoff, double resonance);

 private:
  double m_first = 0.0;
  double m_second = 0.0;
};

/// 0 below `from`, 1 above `to`, and a soft curve between them.
[[nodiscard]] double SoftStep(double from, double to, double x);

/// 1 at time 0, half of it after every `halfLife` seconds.
[[nodiscard]] double Decay(double seconds, double halfLife);

}  // namespace kestrin::demo
