// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

#include "base/Result.h"

namespace kestrin::core::sound {

/// The port to the computer's loudspeaker for sound that is made while it is heard: one channel, 48,000 samples a
/// second, from the making to the ear a few hundredths of a second. One stream at a time; nothing here waits.
class SoundOutput {
 public:
  /// Fills in the next samples and says how many; with fewer than there is room for the sound ends, once they have been
  /// heard. Called on a thread of the output's own, in short intervals: it must not wait. It must not throw.
  using Source = std::function<std::size_t(std::span<std::int16_t>)>;

  /// How things stand with the stream that was started last.
  struct Status {
    bool isPlaying = false;
    /// Once it is no longer playing: whether it was heard to its last sample or stopped, or why not.
    base::Result<> ended;
  };

  virtual ~SoundOutput() = default;
  /// Starts a stream in place of the one that is playing.
  virtual void Start(Source source) = 0;
  /// Silence at once; the source is not called any more when this returns. Nothing happens when nothing is playing.
  virtual void Stop() = 0;
  [[nodiscard]] virtual Status Look() = 0;
};

}  // namespace kestrin::core::sound
