// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>
#include <filesystem>
#include <string>

#include "core/base/EventPump.h"
#include "core/base/Result.h"

namespace kestrin::core::base {
class Archives;
class Disk;
}  // namespace kestrin::core::base
namespace kestrin::core::sound {
class SoundSet;
}
namespace kestrin::ui::kit {
class Dialogs;
class SpecialFolders;
}  // namespace kestrin::ui::kit

namespace kestrin::ui::window {

/// Sets with their sounds as one file, as the person meets them: packs the set, and unpacks others into a folder of
/// their own among the person's documents.
class PackedSets {
  Q_DECLARE_TR_FUNCTIONS(kestrin::ui::window::PackedSets)

 public:
  /// Where sets are unpacked, in the documents' folder.
  static constexpr const char* kFolderName = "Kestrin sounds";

  /// All must outlive the object; without `archives` there are no packed sets.
  PackedSets(core::base::Archives* archives, core::base::Disk& disk, kit::Dialogs& dialogs,
             const kit::SpecialFolders& folders)
      : m_archives(archives), m_disk(disk), m_dialogs(dialogs), m_folders(folders) {}

  /// Whether a file of that name is taken for a packed set.
  [[nodiscard]] bool Takes(const std::filesystem::path& path) const;
  /// Whether that file is a packed set, or cannot be read, which unpacking tells.
  [[nodiscard]] bool HoldsSet(const std::filesystem::path& path) const;
  /// Unpacks the set into a new folder. Returns its configuration file, or what to tell the person.
  [[nodiscard]] core::base::Result<std::filesystem::path> Unpack(const std::filesystem::path& path,
                                                                 const core::base::EventPump& pump);

  /// Why the set cannot be packed, for a tool tip; "" when it can.
  [[nodiscard]] QString WhyNot(const core::sound::SoundSet& set) const;
  /// Asks what file a set of that name is to be packed as, in the folder to begin with. Empty when the person thought
  /// better of it.
  [[nodiscard]] std::filesystem::path AskForFile(const std::filesystem::path& folder, const std::string& name);
  /// Packs the set as that file; one that is there is replaced, since the person was asked. The text of a failure is
  /// for them.
  [[nodiscard]] core::base::Result<> Pack(const core::sound::SoundSet& set, const std::filesystem::path& file,
                                          const core::base::EventPump& pump);

 private:
  core::base::Archives* m_archives;
  core::base::Disk& m_disk;
  kit::Dialogs& m_dialogs;
  const kit::SpecialFolders& m_folders;
};

}  // namespace kestrin::ui::window
