// SPDX-License-Identifier: MIT
#include "sound/import/SoundWriter.h"

#include "sound/LSU_SoundFile.h"

namespace kestrin::core::sound {

SoundWriter::SoundWriter(const base::AppendBytes& append, std::uint32_t headerWord) : m_append(append) {
  for (std::size_t byte = 0; byte < LSU_SoundFile::kHeaderBytes; ++byte)
    m_bytes += static_cast<char>(headerWord >> 8 * byte & 0xFF);
  m_isWritten = m_append(m_bytes);
}

bool SoundWriter::Add(std::span<const std::int16_t> samples) {
  m_bytes.clear();
  for (const std::int16_t sample : samples) {
    const auto word = static_cast<std::uint16_t>(sample);
    m_bytes += static_cast<char>(word & 0xFF);
    m_bytes += static_cast<char>(word >> 8);
    m_isSilent = m_isSilent && sample == 0;
  }
  m_count += samples.size();
  return m_isWritten = m_isWritten && m_append(m_bytes);
}

}  // namespace kestrin::core::sound
