// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "base/Disk.h"
#include "base/Result.h"
#include "update/FileSink.h"

namespace kestrin::core::update {

/// The one owner of the fonts' files: one folder for each font ("item") under the fonts folder, named as the catalogue
/// names the font. Whoever writes, removes or takes a file there does it through this class.
///
/// All paths are full ones; the process's working folder plays no part. The item "" is the fonts folder itself. A
/// font's folder that is a link is never written through, nor is a link inside it. Failures tell in half a sentence
/// what is wrong with which file; DiskAdvice() knows what to do.
class FontStore {
 public:
  /// Makes the fonts folder when it does not exist; when it cannot be made, the first step that writes says why. The
  /// disk must outlive this object.
  FontStore(const std::filesystem::path& fontsFolder, base::Disk& disk);

  /// The item's own folder.
  [[nodiscard]] std::filesystem::path FolderOf(const std::string& item) const;
  /// Whether the item's folder is there.
  [[nodiscard]] bool Has(const std::string& item) const;
  /// Whether the item's folder holds that file.
  [[nodiscard]] bool Has(const std::string& item, const std::string& fileName) const;

  /// Takes the fonts folder for one update and removes what updates left there that were ended by force. While the lock
  /// lives nobody else gets the folder: they fail with InUse and a whole sentence as text.
  [[nodiscard]] base::Result<std::unique_ptr<base::Disk::Lock>> Take() const;

  /// Makes the item's folder when it does not exist.
  base::Result<> MakeFolder(const std::string& item) const;
  /// Writes a file of the item, whole or not at all. A link or a pipe of that name gives way to it.
  base::Result<> Write(const std::string& item, const std::string& fileName, std::string_view content) const;
  /// Removes what an interrupted download left in the item's folder.
  base::Result<> RemoveTemporary(const std::string& item) const;
  /// Where a sound file goes that comes into `folder`, a font's own.
  [[nodiscard]] std::unique_ptr<FileSink> Receive(const std::filesystem::path& folder,
                                                  const std::string& fileName) const;

 private:
  /// Fails when the item's folder is a link. Asked before every step: it may have become one since the last.
  [[nodiscard]] base::Result<> GuardLink(const std::string& item) const;

  std::filesystem::path m_fontsFolder;
  base::Disk& m_disk;
};

}  // namespace kestrin::core::update
