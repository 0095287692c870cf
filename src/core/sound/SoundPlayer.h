// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "base/Result.h"

namespace kestrin::core::sound {

/// The port to the computer's loudspeaker. Plays one sound at a time; nothing here waits for it.
class SoundPlayer {
 public:
  /// How things stand with the sound that was started last.
  struct Status {
    bool playing = false;
    /// Once it is no longer playing: whether it was played to its last sample or stopped, or why not.
    base::Result<> ended;
  };

  virtual ~SoundPlayer() = default;
  /// Starts a WAV file as LSU_SoundFile::WriteWav() writes it, in place of the sound that is playing. The file may be
  /// replaced as soon as this returns.
  virtual void Play(const std::filesystem::path& wav) = 0;
  /// Silence. Nothing happens when nothing is playing.
  virtual void Stop() = 0;
  [[nodiscard]] virtual Status Look() = 0;
};

}  // namespace kestrin::core::sound
