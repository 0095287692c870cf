// SPDX-License-Identifier: MIT
#include "update/FontStore.h"

#include <system_error>
#include <utility>

#include "base/PathText.h"
#include "base/WholeFile.h"
#include "update/FileSteps.h"
#include "update/FontDownload.h"
#include "update/FontFiles.h"
#include "update/LeftOvers.h"

namespace kestrin::core::update {

namespace fs = std::filesystem;
using base::Disk;
using base::Failure;
using base::FailureKind;
using base::FailureOf;
using base::Quoted;
using base::Result;

namespace {

/// Why the lock could not be asked for.
Failure CouldNotLock(const fs::path& path, const std::error_code& error) {
  std::error_code ignored;
  const fs::file_status there = fs::symlink_status(path, ignored);
  Failure why = FailureOf(error);
  if (fs::is_directory(there)) why = {FailureKind::InTheWay, "a folder of that name is in the way"};
  if (fs::is_symlink(there)) why = {FailureKind::InTheWay, "a link of that name is in the way"};
  return {why.kind, Quoted(path) + " could not be locked: " + why.text};
}

}  // namespace

FontStore::FontStore(const fs::path& fontsFolder, Disk& disk) : m_fontsFolder(fontsFolder), m_disk(disk) {
  std::error_code failed;
  const fs::path absolute = fs::absolute(fontsFolder, failed);
  if (!failed) m_fontsFolder = absolute;
  static_cast<void>(update::MakeFolder(m_fontsFolder));
}

fs::path FontStore::FolderOf(const std::string& item) const {
  return item.empty() ? m_fontsFolder : m_fontsFolder / base::PathOf(item);
}

bool FontStore::Has(const std::string& item) const {
  std::error_code ignored;
  return fs::is_directory(FolderOf(item), ignored);
}

bool FontStore::Has(const std::string& item, const std::string& fileName) const {
  return IsFile(FolderOf(item) / base::PathOf(fileName));
}

Result<std::unique_ptr<Disk::Lock>> FontStore::Take() const {
  if (const Result<> made = update::MakeFolder(m_fontsFolder); !made) return made.Why();
  const fs::path path = m_fontsFolder / FontFiles::kLock;
  Disk::LockResult result = m_disk.TryLock(path);
  if (result.error) return CouldNotLock(path, result.error);
  if (result.heldByAnother)
    return Failure{FailureKind::InUse,
                   "Another update is putting fonts into this folder. Wait until it is done and try again."};
  // Before anything is written: on a full disk they may be what fills it.
  RemoveLeftOvers(m_fontsFolder);
  return std::move(result.lock);
}

Result<> FontStore::MakeFolder(const std::string& item) const {
  if (Result<> guarded = GuardLink(item); !guarded) return guarded;
  return update::MakeFolder(FolderOf(item));
}

Result<> FontStore::Write(const std::string& item, const std::string& fileName, std::string_view content) const {
  if (Result<> guarded = GuardLink(item); !guarded) return guarded;
  const fs::path path = FolderOf(item) / base::PathOf(fileName);
  std::error_code ignored;
  const fs::file_status there = fs::symlink_status(path, ignored);
  if (fs::exists(there) && !fs::is_regular_file(there) && !fs::is_directory(there))
    if (Result<> removed = RemoveFile(path); !removed) return removed;
  return base::WriteWholeFile(path, content, m_disk);
}

Result<> FontStore::RemoveTemporary(const std::string& item) const {
  if (Result<> guarded = GuardLink(item); !guarded) return guarded;
  return RemoveFile(FolderOf(item) / FontFiles::kTemporaryName);
}

std::unique_ptr<FileSink> FontStore::Receive(const fs::path& folder, const std::string& fileName) const {
  return std::make_unique<FontDownload>(folder, fileName, m_disk);
}

Result<> FontStore::GuardLink(const std::string& item) const {
  const fs::path folder = FolderOf(item);
  std::error_code ignored;
  // Where the fonts folder itself lies is the person's own choice.
  if (item.empty() || !fs::is_symlink(folder, ignored)) return {};
  return Failure{FailureKind::InTheWay, Quoted(folder) + " is a link to another place, into which nothing is written"};
}

}  // namespace kestrin::core::update
