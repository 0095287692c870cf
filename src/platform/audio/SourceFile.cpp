// SPDX-License-Identifier: MIT
#include "platform/audio/SourceFile.h"

#include <algorithm>

namespace kestrin::platform::audio {

std::size_t SourceFile::ReadAt(std::uint64_t offset, void* bytes, std::size_t most) {
  if (offset >= m_size || m_failed) return 0;
  const auto inside = static_cast<std::size_t>(std::min<std::uint64_t>(most, m_size - offset));
  const std::int64_t read = Read(offset, bytes, inside);
  if (read >= 0) return static_cast<std::size_t>(read);
  m_failed = true;
  return 0;
}

}  // namespace kestrin::platform::audio
