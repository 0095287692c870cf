// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "base/Result.h"
#include "base/WholeFile.h"

namespace kestrin::core::base {

class Disk;

/// A new file that is complete and has no name of its own yet: it takes one that nobody has. It goes with the object
/// when it took none.
class FileBeside {
 public:
  /// Writes `content` into a new file in the folder and forces it onto the disk. The text of a failure is the reason
  /// alone. When `content` throws, no file is left.
  [[nodiscard]] static Result<FileBeside> Write(const std::filesystem::path& folder, const ContentInPieces& content,
                                                Disk& disk);

  ~FileBeside();
  FileBeside(FileBeside&& other) noexcept;
  FileBeside& operator=(FileBeside&& other) noexcept;
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  /// Gives it the name `path`, in the same folder, for good. Never replaces anything, whoever is quicker: then the
  /// failure is InTheWay and another name can be tried. The name is not forced onto the disk: who makes many files does
  /// that once for all of them.
  Result<> TakeNewName(const std::filesystem::path& path, Disk& disk);

 private:
  explicit FileBeside(std::filesystem::path path) : m_path(std::move(path)) {}

  /// Empty when there is no file to remove.
  std::filesystem::path m_path;
};

}  // namespace kestrin::core::base
