// SPDX-License-Identifier: MIT
#include "sound/level/BoardSound.h"

#include <algorithm>
#include <utility>

#include "base/PathText.h"
#include "sound/level/SampleDecoder.h"

namespace kestrin::core::sound {

BoardSound::BoardSound(const LSU_SoundFile& sound)
    : m_sound(sound.WithoutStream()), m_coder(sound.Peak(), sound.Volume()), m_reader(sound.FileNameAndPath()) {
  if (m_sound.NrOfSamples() == 0) return;
  m_failed =
      LSU_SoundFile::CodedBytes(m_sound.NrOfSamples()) > LSU_SoundFile::kLongestStream || m_reader.Next(1).size() != 1;
  m_left = static_cast<std::size_t>(m_sound.NrOfSamples() - 1) / 2 * 2;
}

std::span<const std::int16_t> BoardSound::Next() {
  const bool isFirst = std::exchange(m_isFirst, false);
  if (m_failed || m_sound.NrOfSamples() == 0 || (m_left == 0 && !isFirst)) return {};
  const std::size_t wanted = std::min(m_left, SampleReader::kBlock);
  const std::span<const std::int16_t> block = m_reader.Next(wanted);
  m_left -= wanted;
  m_failed = block.size() != wanted || !m_coder.CanCode(LargestMagnitude(block));
  if (m_failed) return {};
  m_stream.assign(isFirst ? 3 : 0, 0);
  const std::size_t coded = m_stream.size();
  m_stream.resize(coded + wanted / 2 * 3);
  m_coder.Code(block, std::span(m_stream).subspan(coded));
  m_samples.resize(m_stream.size() / 3 * 2);
  SampleDecoder::Decode(m_stream, m_samples);
  return m_samples;
}

base::Result<> BoardSound::Ended() const {
  if (!m_failed) return {};
  base::Result<> codable = m_sound.CheckCodable();
  if (!codable) return codable;
  // The file is back by now; this run has missed it all the same.
  return base::Failure{base::FailureKind::Changed,
                       base::Quoted(m_sound.FileNameAndPath()) + " changed while it was read. Try again."};
}

}  // namespace kestrin::core::sound
