// SPDX-License-Identifier: MIT
#include "ui/window/PackedSets.h"

#include <system_error>
#include <vector>

#include "core/base/NameBeside.h"
#include "core/base/PathText.h"
#include "core/base/TakeName.h"
#include "core/base/Text.h"
#include "core/sound/SoundSet.h"
#include "core/sound/pack/PackedNames.h"
#include "core/sound/pack/SetPacker.h"
#include "core/sound/pack/SetUnpacker.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/FileFilter.h"
#include "ui/kit/PathText.h"
#include "ui/kit/SpecialFolders.h"

namespace kestrin::ui::window {

namespace fs = std::filesystem;

using core::sound::SetPacker;
using core::sound::SetUnpacker;

bool PackedSets::Takes(const fs::path& path) const {
  return m_archives != nullptr &&
         core::base::EqualsIgnoringCase(core::base::TextOf(path.extension()), SetPacker::kEnding);
}

bool PackedSets::HoldsSet(const fs::path& path) const {
  return SetUnpacker(*m_archives, m_disk).KindOf(path) != SetUnpacker::Kind::NoSet;
}

core::base::Result<fs::path> PackedSets::Unpack(const fs::path& path, const core::base::EventPump& pump) {
  return SetUnpacker(*m_archives, m_disk).UnpackBelow(path, m_folders.Documents() / kFolderName, pump);
}

QString PackedSets::WhyNot(const core::sound::SoundSet& set) const {
  if (m_archives == nullptr) return tr("This version packs no sets.");
  for (const core::sound::Slot& slot : core::sound::kSlots)
    if (set.Rows(slot.kind) > 0) return {};
  return tr("There are no sounds in the set. Add some first.");
}

fs::path PackedSets::AskForFile(const fs::path& folder, const std::string& name) {
  const QString start =
      kit::TextOf(folder / core::base::PathOf(core::sound::PackedNames::Plain(name + ".zip") + ".zip"));
  const QString filter = kit::QtFileFilter(tr("Packed sound set (*.ZIP)|*.zip|All files (*.*)|*.*"));
  return kit::PathOf(
      m_dialogs.SaveFile(tr("Pack the set with its sounds"), start, filter, "zip", kit::HelpContext::Save));
}

core::base::Result<> PackedSets::Pack(const core::sound::SoundSet& set, const fs::path& file,
                                      const core::base::EventPump& pump) {
  std::vector<fs::path> missing;
  for (const core::sound::MissingSound& sound : set.AllMissing().All()) missing.push_back(sound.path);
  std::error_code ignored;
  const bool replaces = fs::is_regular_file(file, ignored);
  const fs::path made = replaces ? core::base::NameBeside(file) : file;
  const core::base::Result<SetPacker::Packed> packed =
      SetPacker(*m_archives).Pack(set.Configuration(), missing, core::base::TextOf(file.stem()), made, pump);
  if (!packed) return packed.Why();
  if (!replaces) return {};
  core::base::Result<> done = core::base::TakeName(made, file);
  if (done) return done;
  fs::remove(made, ignored);
  return core::base::Failure{done.Why().kind, core::base::Quoted(file) + " could not be written: " + done.Why().text};
}

}  // namespace kestrin::ui::window
