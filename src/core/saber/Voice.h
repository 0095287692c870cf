// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace kestrin::core::saber {

/// A sound that is being played, once or over and over. What is stopped in the middle fades within 5 ms, so that it
/// does not click.
class Voice {
 public:
  /// Samples that a sound takes to fade once it is stopped: sample n of them, from 0, has (kFade - n) / kFade of its
  /// height.
  static constexpr int kFade = 240;

  /// Silence.
  Voice() = default;
  /// The samples must outlive the voice.
  Voice(std::span<const std::int16_t> samples, bool isLoop) : m_samples(samples), m_isLoop(isLoop) {}

  /// The next sample, 0 once it has ended.
  [[nodiscard]] double Next();
  /// Lets it fade; what fades already goes on doing so.
  void Stop();
  /// Whether there is nothing more to hear.
  [[nodiscard]] bool HasEnded() const { return m_at >= m_samples.size() || m_left == 0; }
  /// Samples until the end of the sound, of a loop until the end of its present turn.
  [[nodiscard]] std::size_t Remaining() const { return HasEnded() ? 0 : m_samples.size() - m_at; }

 private:
  std::span<const std::int16_t> m_samples;
  std::size_t m_at = 0;
  bool m_isLoop = false;
  bool m_fades = false;
  /// Samples of the fade that are still to come.
  int m_left = kFade;
};

}  // namespace kestrin::core::saber
