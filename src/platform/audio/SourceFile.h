// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>

#include "core/base/Result.h"

namespace kestrin::platform::audio {

/// A file of the person's that is only read, whoever hands it out: an ordinary file and nothing else, looked at and
/// opened in one step, so that nobody can put a pipe or a device in its place in between.
class SourceFile {
 public:
  virtual ~SourceFile() = default;
  SourceFile(const SourceFile&) = delete;
  SourceFile& operator=(const SourceFile&) = delete;

  /// Opens without ever waiting. The text of a failure is for the person, without the file's name.
  [[nodiscard]] static core::base::Result<std::unique_ptr<SourceFile>> Open(const std::filesystem::path& path);

  /// Its bytes when it was opened; what was added since is not read.
  [[nodiscard]] std::uint64_t Size() const { return m_size; }
  /// Reads at most `most` bytes from `offset` on. Returns how many were read; 0 at the end, and when reading failed.
  [[nodiscard]] std::size_t ReadAt(std::uint64_t offset, void* bytes, std::size_t most);
  /// Whether a read has failed.
  [[nodiscard]] bool HasFailed() const { return m_failed; }
  /// Whether somebody has written to it since it was opened.
  [[nodiscard]] virtual bool HasChanged() const = 0;

 protected:
  explicit SourceFile(std::uint64_t size) : m_size(size) {}

 private:
  /// Reads inside the file; negative when that failed.
  [[nodiscard]] virtual std::int64_t Read(std::uint64_t offset, void* bytes, std::size_t most) = 0;

  std::uint64_t m_size;
  bool m_failed = false;
};

}  // namespace kestrin::platform::audio
