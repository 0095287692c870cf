// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "base/Archives.h"
#include "base/PrivateFolder.h"
#include "sound/import/ImportedSound.h"

namespace kestrin::core::sound {

/// What a person names to import - sounds, folders of them, ZIP files - as single sounds.
///
/// A file that is named is taken whatever it is called. Of folders, with all that is below, and of ZIP files those are
/// taken whose names end like a sound's, in the order in which people count; what is hidden is left out, and links to
/// folders are not followed. What a ZIP file holds is unpacked into a private folder, which goes with the object. What
/// cannot be taken is there too, with the reason.
class SourceList {
 public:
  /// How much is taken at most, against mistakes and against archives that are made to fill a disk.
  struct Limits {
    /// Sounds in all.
    std::size_t sounds = 1'000;
    /// Files and folders that are looked at in one folder that is named, and how deep.
    std::size_t entries = 100'000;
    int depth = 16;
    /// Bytes of one sound that is unpacked, and of all of them.
    std::uint64_t bytesOfOne = std::uint64_t{1} << 30;
    std::uint64_t bytesInAll = std::uint64_t{4} << 30;
  };
  /// Whether to go on; asked often.
  using GoOn = std::function<bool()>;

  /// `archives` must outlive the object. What is unpacked goes below `place`, by default where the system keeps what
  /// does not last.
  explicit SourceList(base::Archives& archives, std::filesystem::path place = {});
  SourceList(base::Archives& archives, std::filesystem::path place, const Limits& limits);

  /// Adds all that `named` is. False when `goOn` ended it: what came until then stays.
  bool Add(const std::filesystem::path& named, const GoOn& goOn = {});

  /// In the order in which they were added.
  [[nodiscard]] const std::vector<ImportSource>& Sources() const { return m_sources; }

  /// Whether a file of that name is taken for a ZIP file.
  [[nodiscard]] static bool HasArchiveName(const std::filesystem::path& path);

 private:
  bool AddFolder(const std::filesystem::path& folder, const GoOn& goOn);
  bool AddArchive(const std::filesystem::path& file, const GoOn& goOn);
  /// False when `goOn` ended it.
  bool Unpack(base::Archive& archive, std::size_t entry, ImportSource& source, const GoOn& goOn);
  /// The place where the next sound is unpacked, or why there is none.
  base::Result<std::filesystem::path> NewPlace(std::string_view name);
  void Refuse(const std::filesystem::path& named, std::string_view reason);
  /// Says so, once for all of `named`, when there is no room for another sound.
  [[nodiscard]] bool HasRoom(const std::filesystem::path& named);

  base::Archives& m_archives;
  std::filesystem::path m_place;
  Limits m_limits;
  std::vector<ImportSource> m_sources;
  std::optional<base::PrivateFolder> m_unpacked;
  std::uint64_t m_unpackedBytes = 0;
  int m_unpackedCount = 0;
};

}  // namespace kestrin::core::sound
