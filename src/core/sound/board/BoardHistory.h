// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/Disk.h"
#include "base/Result.h"
#include "device/TLS.h"
#include "sound/LSU_Configuration.h"
#include "sound/board/KnownSet.h"

namespace kestrin::core::sound {

/// A set that a board has got.
struct HistoryEntry {
  using Time = std::chrono::sys_seconds;

  /// The entry's own file, which opens like any set's.
  std::filesystem::path file;
  Time time{};
  /// The board's serial number.
  std::string serialNumber;
  /// The set as it was: with the file that it had, its name, its sounds and how these were coded.
  KnownSet set;
  /// The board's detection parameters, as far as they were known.
  std::optional<device::AccParam> parameters;
};

/// What boards have got from this computer, one file a download, the latest kMost of them. A file is there whole or not
/// at all. It begins as the file of a set does, see ConfigurationFile, so that it can be opened as one; readers of sets
/// stop where the rest begins:
///
///     DOWNLOAD-1
///     time 2026-11-22T14:45:48Z
///     board 4B535401
///     set PATH                                     of the set's file; nothing behind the blank: it had none
///     name NAME
///     parameters 180 6 700 8 20 50                 in command order; no such line: not known
///     sound SLOT POSITION VOLUME LENGTH SUM PATH   in flash order; volume in percent, the stream's bytes and their sum
///
/// Files that cannot be read are nobody's entries, and stay.
class BoardHistory {
 public:
  static constexpr const char* kFolderName = "on-the-board";
  static constexpr std::size_t kMost = 50;

  /// The folder is made with the first entry. Empty: nothing is kept. The disk must outlive the history.
  BoardHistory(std::filesystem::path folder, base::Disk& disk) : m_folder(std::move(folder)), m_disk(disk) {}

  /// Remembers that the board has got this set, which is laid out as it was sent. `path` is its file, if it has one.
  /// The text of a failure is for the person.
  base::Result<> Add(LSU_Configuration& sent, const std::filesystem::path& path, const std::string& serialNumber,
                     const std::optional<device::AccParam>& parameters, HistoryEntry::Time time);
  /// All entries, the latest first.
  [[nodiscard]] std::vector<HistoryEntry> Entries() const;

 private:
  /// All but the last kMost entries go. `added` stays in any case: the clock may have been set back.
  void ForgetOldest(const std::filesystem::path& added) const;

  std::filesystem::path m_folder;
  base::Disk& m_disk;
};

}  // namespace kestrin::core::sound
