// SPDX-License-Identifier: MIT
#include "platform/audio/VirtualFile.h"

#include <cstdio>

namespace kestrin::platform::audio {

namespace {

/// A file is read once, and looked through a little beforehand.
constexpr std::int64_t kReadings = 4;
constexpr std::int64_t kAnyFile = std::int64_t{4} << 20;
/// What a call counts as, besides its bytes. MP3 files are read in pieces of a few bytes.
constexpr std::int64_t kCall = 8;

VirtualFile& Of(void* object) { return *static_cast<VirtualFile*>(object); }

}  // namespace

VirtualFile::VirtualFile(SourceFile& file)
    : m_file(file), m_work(kReadings * static_cast<std::int64_t>(file.Size()) + kAnyFile) {}

SF_VIRTUAL_IO VirtualFile::Calls() {
  return {[](void* object) { return static_cast<sf_count_t>(Of(object).m_file.Size()); },
          [](sf_count_t offset, int whence, void* object) { return Of(object).Seek(offset, whence); },
          [](void* bytes, sf_count_t count, void* object) { return Of(object).Read(bytes, count); },
          [](const void*, sf_count_t, void*) -> sf_count_t { return 0; },
          [](void* object) { return Of(object).m_position; }};
}

sf_count_t VirtualFile::Seek(sf_count_t offset, int whence) {
  m_work -= kCall;
  const sf_count_t size = static_cast<sf_count_t>(m_file.Size());
  const sf_count_t from = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? m_position : size;
  // Files may say any number, so the sum might have no room.
  if (offset < -from || offset > SF_COUNT_MAX - from) return -1;
  m_position = from + offset;
  return m_position;
}

sf_count_t VirtualFile::Read(void* bytes, sf_count_t count) {
  m_work -= kCall;
  if (IsUsedUp() || count <= 0) return 0;
  const auto read = static_cast<sf_count_t>(
      m_file.ReadAt(static_cast<std::uint64_t>(m_position), bytes, static_cast<std::size_t>(count)));
  m_position += read;
  m_work -= read;
  return read;
}

}  // namespace kestrin::platform::audio
