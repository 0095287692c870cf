// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "base/Archives.h"
#include "base/Disk.h"
#include "base/EventPump.h"
#include "base/Result.h"

namespace kestrin::core::sound {

/// Unpacks a set that was packed with its sounds, or whatever pretends to be one: everything is checked before a file
/// gets its name, nothing is overwritten, and a set is there whole or not at all, also when the program is killed.
class SetUnpacker {
 public:
  /// What a ZIP file is.
  enum class Kind {
    /// A packed set.
    Set,
    /// None: it holds no configuration file.
    NoSet,
    /// Nothing that could be read. Unpacking it says why.
    Unreadable,
  };

  /// Both must outlive the object.
  SetUnpacker(base::Archives& archives, base::Disk& disk) : m_archives(archives), m_disk(disk) {}

  /// By the names of the files in it alone.
  [[nodiscard]] Kind KindOf(const std::filesystem::path& file) const;

  /// Unpacks into the folder, which is made when it is absent; fails with InTheWay when one of the names is taken
  /// there. Returns the path of the configuration file. `pump` gets its turn on the way; when it throws, nothing is
  /// unpacked. The text of a failure is for the person.
  [[nodiscard]] base::Result<std::filesystem::path> Unpack(const std::filesystem::path& file,
                                                           const std::filesystem::path& folder,
                                                           const base::EventPump& pump = {});
  /// The same into a new folder in `place` that has the name of `file`, with a number behind it when that is taken.
  [[nodiscard]] base::Result<std::filesystem::path> UnpackBelow(const std::filesystem::path& file,
                                                                const std::filesystem::path& place,
                                                                const base::EventPump& pump = {});

 private:
  /// `isNew`: the folder has to be made.
  [[nodiscard]] base::Result<std::filesystem::path> UnpackInto(const std::filesystem::path& file,
                                                               const std::filesystem::path& folder, bool isNew,
                                                               const base::EventPump& pump);

  base::Archives& m_archives;
  base::Disk& m_disk;
};

}  // namespace kestrin::core::sound
