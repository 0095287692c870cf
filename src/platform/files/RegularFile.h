// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

#include "core/base/Result.h"

namespace kestrin::platform::files {

/// An ordinary file that is open for reading, at any place of it. Never a folder, a device or a pipe: those could be
/// waited for without end, and what was looked at is what is read.
class RegularFile {
 public:
  /// Opens the file without waiting for anything. The text of a failure is the reason alone.
  [[nodiscard]] static core::base::Result<RegularFile> Open(const std::filesystem::path& path);

  ~RegularFile();
  RegularFile(RegularFile&& other) noexcept;
  RegularFile& operator=(RegularFile&& other) noexcept;

  /// Its bytes when it was opened.
  [[nodiscard]] std::uint64_t Size() const { return m_size; }
  /// Whether somebody has written to it since it was opened.
  [[nodiscard]] bool HasChanged() const;
  /// Reads from `offset` on until `bytes` is full or the file ends. Returns how many bytes it was. The text of a
  /// failure is the reason alone.
  [[nodiscard]] core::base::Result<std::size_t> ReadAt(std::uint64_t offset, std::span<char> bytes) const;

 private:
  /// What the system knows the open file as, and what it told about it then.
  struct Handle;
  RegularFile(std::unique_ptr<Handle> handle, std::uint64_t size);

  std::unique_ptr<Handle> m_handle;
  std::uint64_t m_size = 0;
};

}  // namespace kestrin::platform::files
