// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

#include "base/Disk.h"
#include "base/Result.h"
#include "sound/unsaved/UnsavedSet.h"

namespace kestrin::core::sound {

/// The folder in which sets that are not saved outlive the program. Every program that runs has one file there at most,
/// with a lock beside it that ends with the program: what nobody has locked was left by one that ended too early.
///
/// The folder is the program's own: the files of the person are never touched.
class UnsavedFolder {
 public:
  /// What the folder is called, in the one for what is this person's own.
  static constexpr const char* kFolderName = "unsaved";

  /// A set that a program has left. While this lives, no other program is offered the set.
  struct Left {
    std::filesystem::path file;
    UnsavedSet set;
    /// Whether the set's own file has been written since.
    bool isOriginNewer = false;
    std::unique_ptr<base::Disk::Lock> lock;
  };

  /// Nothing is made until something is kept. The disk must outlive the object.
  UnsavedFolder(std::filesystem::path folder, base::Disk& disk);

  /// What was left, the latest first. What was saved after all is cleared away; what is not whole, or was not put there
  /// by this program, is left alone.
  [[nodiscard]] std::vector<Left> Find();

  /// Keeps this content, of UnsavedSet::ContentOf(), in place of what this program has kept before: whole or not at
  /// all, and forced onto the disk. After a failure, whose text is for the person, what was kept before is kept still.
  base::Result<> Keep(std::string_view content);
  /// What this program has kept goes.
  void Forget();

  /// From now on this is what this program has kept: its file is replaced by the next Keep().
  void TakeOver(Left&& left);
  /// Nobody wants it any more.
  static void Remove(Left&& left);

 private:
  base::Result<> DrawName();
  /// Takes the lock anew whose file somebody has removed: without it the set would look left.
  void RenewLock();

  std::filesystem::path m_folder;
  base::Disk& m_disk;
  /// The file of this program; empty when it has none.
  std::filesystem::path m_file;
  std::unique_ptr<base::Disk::Lock> m_lock;
};

}  // namespace kestrin::core::sound
