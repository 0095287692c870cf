// SPDX-License-Identifier: MIT
#include "sound/SampleReader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <system_error>

#include "sound/LSU_SoundFile.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

SampleReader::SampleReader(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) {
    m_state = State::Missing;
    return;
  }
  // Opening a pipe would wait for a writer, and a device may never end.
  if (fs::exists(status) && status.type() != fs::file_type::unknown && !fs::is_regular_file(status)) {
    m_state = State::NotAFile;
    return;
  }
  // Whole blocks are read; a second buffer in between would only copy them once more.
  m_file.rdbuf()->pubsetbuf(nullptr, 0);
  m_file.open(path, std::ios::binary);
  if (!m_file) return;
  std::array<char, LSU_SoundFile::kHeaderBytes> header;
  m_file.read(header.data(), header.size());
  if (m_file.bad()) return;
  m_state = State::Good;
  m_block.resize(kBlock);
}

std::span<const std::int16_t> SampleReader::Next(std::size_t most) {
  if (m_state != State::Good) return {};
  const std::size_t wanted = std::min(most, kBlock) * sizeof(std::int16_t);
  m_file.read(reinterpret_cast<char*>(m_block.data()), static_cast<std::streamsize>(wanted));
  if (m_file.bad()) {
    m_state = State::Failed;
    return {};
  }
  const std::span samples(m_block.data(), static_cast<std::size_t>(m_file.gcount()) / sizeof(std::int16_t));
  if constexpr (std::endian::native != std::endian::little) {
    for (std::int16_t& sample : samples) {
      const auto word = static_cast<std::uint16_t>(sample);
      sample = static_cast<std::int16_t>(static_cast<std::uint16_t>(word << 8 | word >> 8));
    }
  }
  return samples;
}

}  // namespace kestrin::core::sound
