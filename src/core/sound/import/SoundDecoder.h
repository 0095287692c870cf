// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "base/Result.h"

namespace kestrin::core::sound {

/// What a sound file says of itself, before anything of it is read.
struct SoundShape {
  /// Samples a second of each channel, 1,000 .. 768,000.
  int rate = 0;
  /// 1 .. 32.
  int channels = 0;
  /// Bits of a sample, for a format that keeps whole numbers; 0 for one with fractions or with losses.
  int bits = 0;
  /// What people call the format: "WAV", "FLAC", "MP3", "Ogg Vorbis" ...
  std::string format;
  /// Whether the format leaves out what an ear is said not to hear, as MP3 does.
  bool isLossy = false;
  /// The frames that the file claims to hold. Files lie: nothing may be reserved by it.
  std::optional<std::uint64_t> claimedFrames;
};

/// A sound file of any kind that is being read, from its first frame to its last.
class SoundDecoder {
 public:
  virtual ~SoundDecoder() = default;
  [[nodiscard]] virtual const SoundShape& Shape() const = 0;
  /// The next frames, one sample for each channel, full scale being 1; louder ones are possible, but none is infinite
  /// or no number. `frames` has room for whole frames. Returns how many frames were read; 0 is the end, also when it
  /// came too early.
  [[nodiscard]] virtual std::size_t Read(std::span<double> frames) = 0;
  /// Behind the last frame: whether that was the end of the sound, or why the file could not be read to its end (cut
  /// off, changed meanwhile, over a limit), as a text for the person with the next step and without the file's name.
  [[nodiscard]] virtual base::Result<> Ended() const = 0;
  /// Samples so far that were no finite numbers and were taken for silence.
  [[nodiscard]] virtual std::uint64_t Mended() const = 0;
};

}  // namespace kestrin::core::sound
