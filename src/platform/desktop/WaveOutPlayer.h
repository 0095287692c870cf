// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "core/sound/SoundPlayer.h"

namespace kestrin::platform::desktop {

/// Plays through Windows' wave output. A sound is read whole before Play() returns, so that its file can be replaced
/// while it is heard; it plays in a thread of its own, since sound cards make their callers wait.
class WaveOutPlayer final : public core::sound::SoundPlayer {
 public:
  WaveOutPlayer() = default;
  /// Stops, and waits a moment for the sound's thread.
  ~WaveOutPlayer() override;
  WaveOutPlayer(const WaveOutPlayer&) = delete;
  WaveOutPlayer& operator=(const WaveOutPlayer&) = delete;

  void Play(const std::filesystem::path& wav) override;
  void Stop() override;
  [[nodiscard]] Status Look() override;

 private:
  struct Job;

  /// Shared with its thread, which may outlive the player when the sound card does not answer.
  std::shared_ptr<Job> m_job;
};

}  // namespace kestrin::platform::desktop
