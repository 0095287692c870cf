// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <filesystem>
#include <functional>
#include <vector>

namespace kestrin::ui::sound {

/// A sound file or a folder as browsing shows it.
struct FolderEntry {
  std::filesystem::path path;
  QString name;
  /// Bytes of a file, 0 for a folder.
  qint64 size = 0;

  friend bool operator==(const FolderEntry&, const FolderEntry&) = default;
};

/// Which sounds of a folder are shown.
enum class SoundFilter {
  Board,  ///< those of the board's own format
  All,    ///< those too that have to be imported first
};

/// What a folder holds, hidden folders left out, both lists sorted as people count.
struct FolderContents {
  std::vector<FolderEntry> folders;
  std::vector<FolderEntry> sounds;
  /// False: the folder cannot be read, or not to its end.
  bool complete = false;

  /// Reads the folder; `goOn` is asked at every entry, and when it says false the contents are incomplete.
  [[nodiscard]] static FolderContents Of(const std::filesystem::path& folder, const std::function<bool()>& goOn = {},
                                         SoundFilter filter = SoundFilter::Board);
};

}  // namespace kestrin::ui::sound
