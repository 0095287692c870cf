// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/Result.h"
#include "sound/LSU_Configuration.h"
#include "sound/MissingSounds.h"

namespace kestrin::core::base {
class Disk;
}

namespace kestrin::core::sound {

/// What loading a configuration shows while it goes on: the slot lists and the memory status.
class ConfigurationView {
 public:
  virtual ~ConfigurationView() = default;
  /// The slot's list display becomes empty.
  virtual void EmptySlot(SlotKind kind) = 0;
  /// The bare file name appears in the slot's list at `position` (from 1).
  virtual void ShowFile(SlotKind kind, int position, const std::string& name) = 0;
  /// Memory gauge and send button follow the configuration.
  virtual void UpdateMemoryStatus() = 0;
  /// The person's interface gets its turn, between blocks of a sound that is read. What it throws ends the loading.
  virtual void Pump() {}
};

/// How loading a configuration ended.
struct LoadResult {
  /// What stands above the names of the files that failed.
  static constexpr const char* kFailedHeadline = "The following files could not be found or are not valid:";

  /// Whether the file is valid: what was loaded up to its flaw stays loaded. A failure's text is for a tool tip or a
  /// log: the file, the line number and what was expected there. Its kind is NotValid, or what kept the file from being
  /// read.
  base::Result<> valid;
  /// The sounds that could not be found or are not valid, in the order of the file. Their places count as if they were
  /// there.
  std::vector<MissingSound> failed;
  /// How many sounds were found beside the configuration file because nothing lies any more where their paths lead.
  int foundBeside = 0;

  /// The text for the person: "" when everything loaded, else the one message of this result.
  [[nodiscard]] std::string Message() const;
};

/// The ".lscfg" file: which sound sits in which slot, with which volume. See docs/file-formats.md.
class ConfigurationFile {
 public:
  /// Writes the configuration as `path`, whole or not at all, with the paths and volumes of the missing sounds in their
  /// places. The text of a failure names the file and what is wrong; it is NotValid when the name of a sound fits into
  /// no line.
  static base::Result<> Save(const LSU_Configuration& configuration, const std::filesystem::path& path,
                             base::Disk& disk, const MissingSounds& missing = {});

  /// What stands in the file for a sound of that path.
  using NameOf = std::function<std::string(const std::filesystem::path&)>;
  /// What Save() writes, with the sounds' paths as they are unless `nameOf` says otherwise; it is asked about an empty
  /// slot's empty path too. Fails with NotValid like Save(); the text is the reason alone.
  [[nodiscard]] static base::Result<std::string> ContentOf(const LSU_Configuration& configuration,
                                                           const MissingSounds& missing = {},
                                                           const NameOf& nameOf = {});

  /// Reads `path` into the configuration and the view. Each slot is emptied when its keyword line has been read. A
  /// path that does not begin at the root is meant from the file's folder first. Where nothing lies at a sound's path,
  /// the sound is looked for beside the file, see PathEnd::PlacesAround().
  [[nodiscard]] static LoadResult Load(const std::filesystem::path& path, LSU_Configuration& configuration,
                                       ConfigurationView& view);
};

}  // namespace kestrin::core::sound
