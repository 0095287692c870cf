// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>

namespace kestrin::core::sound {

/// How loud a sound is.
struct Loudness {
  /// Perceived loudness in LUFS (EBU R128), as both ears hear a sound that comes out of one loudspeaker; nothing for a
  /// sound that has none: silence. A sound shorter than 400 ms counts by its effect on the ear: as if silence followed.
  std::optional<double> lufs;
  /// The highest peak between the samples, in dB below full scale; nothing for silence.
  std::optional<double> truePeak;
};

/// Measures a sound of one channel and 48,000 samples a second, block by block.
class LoudnessMeter {
 public:
  virtual ~LoudnessMeter() = default;
  /// The next samples, all of them finite.
  virtual void Add(std::span<const double> samples) = 0;
  /// The sound has ended. Nothing may follow.
  [[nodiscard]] virtual Loudness Finish() = 0;
};

}  // namespace kestrin::core::sound
