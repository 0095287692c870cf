// SPDX-License-Identifier: MIT
#include "base/FileBeside.h"

#include <system_error>
#include <utility>

#include "base/Disk.h"
#include "base/WriteBeside.h"

namespace kestrin::core::base {

namespace fs = std::filesystem;

Result<FileBeside> FileBeside::Write(const fs::path& folder, const ContentInPieces& content, Disk& disk) {
  Result<fs::path> written = WriteBeside(folder, content);
  if (!written) return written.Why();
  FileBeside file(*std::move(written));
  if (const std::error_code error = disk.Flush(file.m_path)) return FailureOf(error);
  return file;
}

FileBeside::~FileBeside() {
  std::error_code ignored;
  if (!m_path.empty()) fs::remove(m_path, ignored);
}

FileBeside::FileBeside(FileBeside&& other) noexcept : m_path(std::exchange(other.m_path, fs::path())) {}

FileBeside& FileBeside::operator=(FileBeside&& other) noexcept {
  // The other one removes what this one had.
  std::swap(m_path, other.m_path);
  return *this;
}

Result<> FileBeside::TakeNewName(const fs::path& path, Disk& disk) {
  if (const std::error_code error = disk.TakeFreeName(m_path, path)) return FailureOf(error);
  m_path.clear();
  return {};
}

}  // namespace kestrin::core::base
