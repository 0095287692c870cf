// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "saber/SharedSamples.h"
#include "sound/SoundPlace.h"

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
  Voice(const sound::SoundPlace& place, SharedSamples samples, bool isLoop)
      : m_place(place), m_samples(std::move(samples)), m_isLoop(isLoop) {}

  /// Whether it is a sound at all, be it that it has ended.
  [[nodiscard]] bool IsSound() const { return m_samples != nullptr; }
  [[nodiscard]] const sound::SoundPlace& Place() const { return m_place; }
  /// Whether any sample of it was taken.
  [[nodiscard]] bool IsHeard() const { return m_isHeard; }
  /// The next sample, 0 once it has ended.
  [[nodiscard]] double Next();
  /// Lets it fade; what fades already goes on doing so.
  void Stop();
  /// Goes on with other samples where it stands, blending into them within `kFade` samples, so that this does not click
  /// either. Where they end earlier, a sound ends and a loop begins its next turn.
  void Exchange(SharedSamples samples);
  /// Whether there is nothing more to hear.
  [[nodiscard]] bool HasEnded() const { return m_at >= Size() || m_left == 0; }
  /// Samples until the end of the sound, of a loop until the end of its present turn.
  [[nodiscard]] std::size_t Remaining() const { return HasEnded() ? 0 : Size() - m_at; }

 private:
  [[nodiscard]] std::size_t Size() const { return m_samples == nullptr ? 0 : m_samples->size(); }

  sound::SoundPlace m_place;
  SharedSamples m_samples;
  /// What it played before an exchange, and samples until nothing is left of it.
  SharedSamples m_before;
  int m_beforeLeft = 0;
  std::size_t m_at = 0;
  bool m_isLoop = false;
  bool m_isHeard = false;
  bool m_fades = false;
  /// Samples of the fade that are still to come.
  int m_left = kFade;
};

}  // namespace kestrin::core::saber
