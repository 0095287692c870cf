// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>

#include "base/Disk.h"
#include "sound/import/AudioTools.h"
#include "sound/import/ImportedSound.h"
#include "sound/import/PreparedSound.h"

namespace kestrin::core::sound {

/// Makes ".lsu" files of sounds of any kind: 48,000 samples a second, one channel, 16 bits, a true peak of at most
/// -1 dB. The person's files are only read. A sound is read block by block, so memory does not grow with it.
///
/// What an object does, it does on the thread that calls it; several threads use one object each.
class SoundImport {
 public:
  /// Whether to go on; asked often, on the importing thread.
  using GoOn = std::function<bool()>;

  /// Both must outlive the object.
  SoundImport(AudioTools& tools, base::Disk& disk) : m_tools(tools), m_disk(disk) {}

  /// Makes the file `folder` / `name`.lsu of the source, with a number behind the name when there is a file of that
  /// name, in any letter case: nothing is ever overwritten. The folder is there. What fails, also since `goOn` said
  /// false, leaves no file, and is told in the result's reason.
  [[nodiscard]] ImportedSound Import(const ImportSource& source, const ImportOptions& options,
                                     const std::filesystem::path& folder, const GoOn& goOn = {});

  /// The first half of Import(): all of the work, into a file of the folder that has no name yet.
  [[nodiscard]] PreparedSound Prepare(const ImportSource& source, const ImportOptions& options,
                                      const std::filesystem::path& folder, const GoOn& goOn = {});
  /// The second half: gives it its name. Names are not forced onto the disk; who makes many sounds does that once.
  [[nodiscard]] ImportedSound Finish(PreparedSound prepared, const std::filesystem::path& folder);

 private:
  AudioTools& m_tools;
  base::Disk& m_disk;
};

}  // namespace kestrin::core::sound
