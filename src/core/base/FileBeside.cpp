// SPDX-License-Identifier: MIT
#include "base/FileBeside.h"

#include <system_error>
#include <utility>

#include "base/Disk.h"
#include "base/NewFile.h"
#include "base/TakeName.h"
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
  // Renaming replaces what is there. So the name is taken first, by a file that can only be made where there is none.
  NewFile place(path);
  if (!place.IsOpen()) return place.WasThere() ? Failure{FailureKind::InTheWay, place.Why().text} : place.Why();
  Result<> done;
  if (!place.Close()) done = place.Why();
  if (done) done = TakeName(m_path, path);
  if (done) {
    m_path.clear();
    if (const std::error_code error = disk.Flush(path.has_parent_path() ? path.parent_path() : "."))
      done = FailureOf(error);
  }
  std::error_code ignored;
  if (!done) fs::remove(path, ignored);
  return done;
}

}  // namespace kestrin::core::base
