// SPDX-License-Identifier: MIT
#include "sound/unsaved/UnsavedFolder.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <utility>

#include "base/NameBeside.h"
#include "base/PathText.h"
#include "base/Text.h"
#include "base/WholeFile.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kBeginning = "unsaved-";
constexpr std::string_view kEnding = ".lscfg";
/// Names are drawn from 64 bits; a folder that refuses every one says so instead.
constexpr int kDraws = 16;

fs::path LockOf(fs::path file) { return file.replace_extension(".lock"); }

/// Whether it is a file by that name. What a link leads to may be anybody's.
bool IsOurs(const fs::directory_entry& entry) {
  std::error_code error;
  return entry.path().extension() == kEnding && base::TextOf(entry.path().stem()).starts_with(kBeginning) &&
         fs::is_regular_file(entry.symlink_status(error));
}

fs::file_time_type WrittenAt(const fs::path& file) {
  std::error_code error;
  const fs::file_time_type time = fs::last_write_time(file, error);
  return error ? fs::file_time_type::min() : time;
}

/// First the set: who then gets the lock finds nothing to offer.
void Clear(const fs::path& file, std::unique_ptr<base::Disk::Lock>& lock) {
  std::error_code ignored;
  fs::remove(file, ignored);
  lock.reset();
  fs::remove(LockOf(file), ignored);
}

}  // namespace

UnsavedFolder::UnsavedFolder(fs::path folder, base::Disk& disk) : m_folder(std::move(folder)), m_disk(disk) {}

std::vector<UnsavedFolder::Left> UnsavedFolder::Find() {
  std::vector<fs::path> files;
  std::error_code error;
  for (fs::directory_iterator entry(m_folder, error), end; !error && entry != end; entry.increment(error))
    if (IsOurs(*entry)) files.push_back(entry->path());

  std::vector<Left> found;
  for (const fs::path& file : files) {
    base::Disk::LockResult locked = m_disk.TryLock(LockOf(file));
    if (locked.lock == nullptr) continue;
    const base::Result<UnsavedSet> set = UnsavedSet::Read(file);
    if (!set) continue;
    if ((*set).IsSaved())
      Clear(file, locked.lock);
    else
      found.push_back({file, *set, WrittenAt((*set).Origin()) > WrittenAt(file), std::move(locked.lock)});
  }
  std::sort(found.begin(), found.end(),
            [](const Left& a, const Left& b) { return WrittenAt(a.file) > WrittenAt(b.file); });
  return found;
}

base::Result<> UnsavedFolder::Keep(std::string_view content) {
  std::error_code error;
  // A power cut must not take the folder with all that is in it.
  if (fs::create_directories(m_folder, error)) error = m_disk.Flush(m_folder.parent_path());
  if (error) {
    const base::Failure why = base::FailureOf(error);
    return base::Failure{why.kind, base::Quoted(m_folder) + " could not be made: " + why.text};
  }
  RenewLock();
  if (m_file.empty())
    if (base::Result<> drawn = DrawName(); !drawn) return drawn;
  return base::WriteWholeFile(m_file, content, m_disk);
}

base::Result<> UnsavedFolder::DrawName() {
  for (int draw = 1; draw <= kDraws; ++draw) {
    // Of ".kestrin-", digits and an ending, the digits are what nobody else draws.
    const std::string chance = base::TextOf(base::NameBeside(m_folder / "set").stem());
    fs::path file = m_folder / (std::string(kBeginning) + chance.substr(chance.rfind('-') + 1) + std::string(kEnding));
    base::Disk::LockResult locked = m_disk.TryLock(LockOf(file));
    if (locked.heldByAnother) continue;
    if (locked.lock == nullptr) {
      const base::Failure why = base::FailureOf(locked.error);
      return base::Failure{why.kind, base::Quoted(file) + " could not be written: " + why.text};
    }
    m_file = std::move(file);
    m_lock = std::move(locked.lock);
    return {};
  }
  return base::Failure{base::FailureKind::InUse, base::Quoted(m_folder) + " is in use by another program"};
}

void UnsavedFolder::RenewLock() {
  std::error_code error;
  if (m_file.empty() || fs::exists(LockOf(m_file), error)) return;
  m_lock.reset();
  m_lock = m_disk.TryLock(LockOf(m_file)).lock;
  // Another program has it already: then it is that one's, and this one draws a name of its own.
  if (m_lock == nullptr) m_file.clear();
}

void UnsavedFolder::Forget() {
  if (!m_file.empty()) Clear(std::exchange(m_file, {}), m_lock);
}

void UnsavedFolder::TakeOver(Left&& left) {
  Forget();
  m_file = std::move(left.file);
  m_lock = std::move(left.lock);
}

void UnsavedFolder::Remove(Left&& left) { Clear(left.file, left.lock); }

}  // namespace kestrin::core::sound
