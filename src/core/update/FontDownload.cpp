// SPDX-License-Identifier: MIT
#include "update/FontDownload.h"

#include <system_error>

#include "base/Disk.h"
#include "base/PathText.h"
#include "base/TakeName.h"
#include "update/FileSteps.h"
#include "update/FontFiles.h"

namespace kestrin::core::update {

namespace fs = std::filesystem;
using base::Failure;
using base::FailureKind;
using base::FailureOf;
using base::Quoted;
using base::Result;

namespace {

/// Bytes are gathered to this before they are written: a write for each piece of the answer would cost a tenth of the
/// speed and more.
constexpr std::size_t kWrittenAtOnce = 65536;

/// The folder behind all links, "" when there is none.
fs::path Behind(const fs::path& folder) {
  std::error_code ignored;
  return fs::canonical(folder, ignored);
}

/// Where a font's files are to go; "" for a link, which leads elsewhere.
fs::path PlaceOf(const fs::path& folder) {
  std::error_code ignored;
  return fs::is_symlink(folder, ignored) ? fs::path() : Behind(folder);
}

}  // namespace

FontDownload::FontDownload(const fs::path& folder, const std::string& fileName, base::Disk& disk)
    : m_folder(folder),
      m_place(PlaceOf(folder)),
      m_temporary(folder / FontFiles::kTemporaryName),
      m_target(folder / base::PathOf(fileName)),
      m_disk(disk) {}

Result<> FontDownload::Begin() {
  // While the server was waited for, anybody may have put a link where the folder or the file was.
  if (HasMoved()) return Moved();
  std::error_code ignored;
  fs::remove(m_temporary, ignored);
  m_file.emplace(m_temporary);
  if (!m_file->IsOpen()) return CouldNotWrite(m_temporary, m_file->Why());
  return {};
}

Result<> FontDownload::Take(std::string_view bytes) {
  m_size += bytes.size();
  m_gathered += bytes;
  return m_gathered.size() < kWrittenAtOnce ? Result<>() : WriteGathered();
}

Result<> FontDownload::Finish() {
  if (Result<> written = WriteGathered(); !written) return written;
  if (!m_file->Close()) return CouldNotWrite(m_temporary, m_file->Why());
  if (HasMoved()) return Moved();
  return GiveName();
}

void FontDownload::Drop() {
  // Closed first: some systems remove no file that is open.
  m_file.reset();
  std::error_code ignored;
  if (!HasMoved()) fs::remove(m_temporary, ignored);
}

bool FontDownload::HasMoved() const { return Behind(m_folder) != m_place; }

Failure FontDownload::Moved() const {
  return {FailureKind::Changed, Quoted(m_folder) + " has become another folder meanwhile"};
}

Result<> FontDownload::WriteGathered() {
  const bool written = m_file->Write(m_gathered);
  m_gathered.clear();
  if (!written) return CouldNotWrite(m_temporary, m_file->Why());
  return {};
}

Result<> FontDownload::GiveName() {
  // Only what was written here may get the name.
  std::error_code error;
  const fs::file_status status = fs::symlink_status(m_temporary, error);
  if (!fs::is_regular_file(status) || fs::file_size(m_temporary, error) != m_size)
    return Failure{FailureKind::Changed, Quoted(m_temporary) + " has become another file meanwhile"};
  // A font that is marked as complete must have its sounds after a power cut, too.
  error = m_disk.Flush(m_temporary);
  if (error) return CouldNotWrite(m_temporary, FailureOf(error));
  const base::Result<> named = base::TakeName(m_temporary, m_target);
  if (named) return {};
  if (fs::is_directory(m_target, error))
    return CouldNotWrite(m_target, {FailureKind::InTheWay, "a folder of that name is in the way"});
  return CouldNotWrite(m_target, named.Why());
}

}  // namespace kestrin::core::update
