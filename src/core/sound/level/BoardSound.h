// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "base/Result.h"
#include "sound/LSU_SoundFile.h"
#include "sound/SampleCoder.h"
#include "sound/SampleReader.h"

namespace kestrin::core::sound {

/// A sound as a board plays it: coded with its peak and its volume, and decoded again, block by block. Full scale is
/// SampleDecoder::kFullScale.
///
/// A board plays two samples for every three bytes of the coded stream. Those of the first three bytes are silent and
/// stand for the first sample of the file, so all others come one sample later than in the file; of an even count the
/// last one is missing.
class BoardSound {
 public:
  /// Opens the file of a sound that was measured. Its own coded stream is neither needed nor made.
  explicit BoardSound(const LSU_SoundFile& sound);

  /// How many samples the board plays: as many as the file has, an odd count getting one more.
  [[nodiscard]] std::int64_t Samples() const { return LSU_SoundFile::CodedBytes(m_sound.NrOfSamples()) / 3 * 2; }

  /// The next samples, about SampleReader::kBlock of them; they stay valid until the next call. None at the end, or
  /// when the board cannot be given this sound (see Ended()).
  [[nodiscard]] std::span<const std::int16_t> Next();

  /// Once there are no more samples: whether the sound came to its end, or else why no board can be given it now, as
  /// LSU_SoundFile::CheckCodable() says it.
  [[nodiscard]] base::Result<> Ended() const;

 private:
  LSU_SoundFile m_sound;
  SampleCoder m_coder;
  SampleReader m_reader;
  /// Samples of the file that are still to be coded.
  std::size_t m_left = 0;
  bool m_isFirst = true;
  bool m_failed = false;
  std::vector<std::uint8_t> m_stream;
  std::vector<std::int16_t> m_samples;
};

}  // namespace kestrin::core::sound
