// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "core/base/Clock.h"
#include "core/sound/SoundPlayer.h"

namespace kestrin::platform::desktop {

/// Plays through PulseAudio, and through PipeWire where that stands in for it. Each sound has a thread of its own,
/// since disks and the sound service make their callers wait.
class PulsePlayer final : public core::sound::SoundPlayer {
 public:
  /// A service that has not answered after this long is given up.
  static constexpr core::base::Clock::Duration kPatience = std::chrono::seconds(5);

  /// `clock` must outlive the player.
  explicit PulsePlayer(const core::base::Clock& clock) : m_clock(clock) {}
  /// Stops, and waits a moment for the sound's thread.
  ~PulsePlayer() override;
  PulsePlayer(const PulsePlayer&) = delete;
  PulsePlayer& operator=(const PulsePlayer&) = delete;

  void Play(const std::filesystem::path& wav) override;
  void Stop() override;
  [[nodiscard]] Status Look() override;

 private:
  struct Job;

  const core::base::Clock& m_clock;
  /// Shared with its thread, which may outlive the player when the service does not answer.
  std::shared_ptr<Job> m_job;
  /// The last time at which the file was seen to be still being read.
  core::base::Clock::Duration m_readUntil{};
};

}  // namespace kestrin::platform::desktop
