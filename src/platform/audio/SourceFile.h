// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>

#include "core/base/Result.h"
#include "platform/files/RegularFile.h"

namespace kestrin::platform::audio {

/// A sound file of the person's as the libraries read it: their calls can tell no failure, so it is kept here.
class SourceFile {
 public:
  /// Opens without ever waiting. The text of a failure is for the person, without the file's name.
  [[nodiscard]] static core::base::Result<std::unique_ptr<SourceFile>> Open(const std::filesystem::path& path);

  /// Its bytes when it was opened; what was added since is not read.
  [[nodiscard]] std::uint64_t Size() const { return m_file.Size(); }
  /// Reads at most `most` bytes from `offset` on. Returns how many were read; 0 at the end, and when reading failed.
  [[nodiscard]] std::size_t ReadAt(std::uint64_t offset, void* bytes, std::size_t most);
  /// Whether a read has failed.
  [[nodiscard]] bool HasFailed() const { return m_failed; }
  /// Whether somebody has written to it since it was opened.
  [[nodiscard]] bool HasChanged() const { return m_file.HasChanged(); }

 private:
  explicit SourceFile(files::RegularFile file) : m_file(std::move(file)) {}

  files::RegularFile m_file;
  bool m_failed = false;
};

}  // namespace kestrin::platform::audio
