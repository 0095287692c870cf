// SPDX-License-Identifier: MIT
#pragma once

#include <sndfile.h>

#include <cstdint>

#include "platform/audio/SourceFile.h"

namespace kestrin::platform::audio {

/// A file as the sound library reads it. What the library does with a damaged file is nobody's promise, so its work is
/// counted, and once it has read far more than the file holds the file is at its end for it.
class VirtualFile {
 public:
  /// `file` must outlive the object.
  explicit VirtualFile(SourceFile& file);

  /// What the library calls; its last argument is the object.
  [[nodiscard]] static SF_VIRTUAL_IO Calls();
  /// Whether the library has used up its work.
  [[nodiscard]] bool IsUsedUp() const { return m_work < 0; }

 private:
  sf_count_t Seek(sf_count_t offset, int whence);
  sf_count_t Read(void* bytes, sf_count_t count);

  SourceFile& m_file;
  sf_count_t m_position = 0;
  /// What is left, in bytes.
  std::int64_t m_work;
};

}  // namespace kestrin::platform::audio
