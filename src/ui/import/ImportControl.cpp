// SPDX-License-Identifier: MIT
#include "ui/import/ImportControl.h"

#include <algorithm>
#include <map>
#include <system_error>
#include <utility>

#include "core/base/PathText.h"
#include "core/base/WindowsName.h"
#include "core/sound/import/SoundEnding.h"
#include "core/sound/import/SourceList.h"
#include "core/sound/level/LevelPlan.h"
#include "ui/import/ImportFrame.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/FileFilter.h"
#include "ui/kit/PathText.h"
#include "ui/kit/SpecialFolders.h"
#include "ui/kit/Translated.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::imports {

namespace fs = std::filesystem;

using core::sound::ImportedSound;
using core::sound::ImportOptions;
using core::sound::ImportSource;
using core::sound::SlotKind;

namespace {

/// What the slots of a set can take still: a single slot's sound is replaced.
core::sound::SlotRoom RoomIn(const core::sound::SoundSet& set) {
  core::sound::SlotRoom room = core::sound::kRoomOfAnEmptySet;
  for (std::size_t place = 0; place < core::sound::kSlots.size(); ++place) {
    const core::sound::Slot& slot = core::sound::kSlots[place];
    if (slot.isList) room[place] -= set.Rows(slot.kind);
  }
  return room;
}

std::vector<core::sound::MemoryUse::Sound> SoundsIn(const core::sound::LSU_Configuration& configuration) {
  std::vector<core::sound::MemoryUse::Sound> sounds;
  for (const core::sound::Slot& slot : core::sound::kSlots)
    for (int position = 1; position <= configuration.Count(slot.kind); ++position)
      sounds.push_back({slot.kind, configuration.FileAt(slot.kind, position).NrOfSamples()});
  return sounds;
}

/// The name of a sound with the folders that it lies in, beginning with what the person has named.
std::string NameIn(const fs::path& named, const std::string& shownAs) {
  const std::string above = core::base::TextOf(named.parent_path());
  return !above.empty() && shownAs.starts_with(above) ? shownAs.substr(above.size()) : shownAs;
}

/// The folder itself; with a number behind its name when something lies in it.
fs::path Unused(const fs::path& folder) {
  constexpr int kMost = 1000;
  for (int number = 1; number < kMost; ++number) {
    fs::path path = folder;
    if (number > 1) (path += " ") += std::to_string(number);
    std::error_code error;
    if (!fs::exists(path, error) || (fs::is_directory(path, error) && fs::is_empty(path, error))) return path;
  }
  return folder;
}

}  // namespace

ImportControl::ImportControl(ImportFrame& frame, ImportModel& rows, Around around, QObject* parent)
    : QObject(parent), m_frame(frame), m_model(rows), m_around(std::move(around)), m_maker(m_around.means) {
  connect(&m_frame, &ImportFrame::addWanted, this, &ImportControl::AskForFiles);
  connect(&m_frame, &ImportFrame::folderWanted, this, &ImportControl::ChooseFolder);
  connect(&m_frame, &ImportFrame::importWanted, this, &ImportControl::Import);
  connect(&m_frame, &ImportFrame::playWanted, this, &ImportControl::Play);
  connect(&m_frame, &ImportFrame::closed, this, &ImportControl::Close);
  connect(&m_model, &ImportModel::changed, this, &ImportControl::MakeReady);
  connect(&m_maker, &SoundMaker::listed, this, &ImportControl::Listed);
  connect(&m_maker, &SoundMaker::made, this, &ImportControl::Made);
  connect(&m_maker, &SoundMaker::copied, this, [this](int id, const fs::path& copy, const QString& failure) {
    if (!failure.isEmpty())
      TellFailure(failure);
    else if (m_isOpen)
      Hear(id, ImportModel::Half::Before, copy);
  });
  connect(&m_maker, &SoundMaker::measured, this, [this](const SoundMaker::Measured& sounds) {
    m_measured = sounds;
    Keep();
  });
  connect(&m_maker, &SoundMaker::kept, this, &ImportControl::Take);
  connect(&m_maker, &SoundMaker::notKept, this, [this](const QString& failure) {
    m_frame.ShowWork(ImportFrame::Work::None);
    m_frame.ShowFailure(failure);
  });
}

void ImportControl::Start() {
  m_isOpen = true;
  m_named.clear();
  m_folder.clear();
  m_making.clear();
  m_isGuessStale = false;
  m_heard = {};
  const core::sound::LSU_Configuration& configuration = m_around.set.Configuration();
  m_model.Start(RoomIn(m_around.set), SoundsIn(configuration), configuration.MaxNrOfSamples());
  m_frame.Open();
}

void ImportControl::Open(const std::vector<fs::path>& named, std::optional<SlotKind> slot) {
  if (named.empty()) return;
  if (!m_isOpen) Start();
  m_slots.insert(m_slots.end(), named.size(), slot);
  m_named.insert(m_named.end(), named.begin(), named.end());
  if (m_folder.empty()) {
    m_folder = FolderFor(named.front());
    m_frame.ShowFolder(m_folder);
  }
  std::error_code ignored;
  const bool isOne = m_named.size() == 1 && (fs::is_directory(m_named.front(), ignored) ||
                                             core::sound::SourceList::HasArchiveName(m_named.front()));
  m_frame.ShowOrigin(isOne ? sound::FileName(m_named.front()) : QString());
  m_frame.ShowFailure({});
  m_frame.ShowWork(ImportFrame::Work::Looking);
  m_maker.List(named);
}

void ImportControl::AskForFiles() {
  const fs::path start = m_named.empty() ? m_around.folders.Documents() : m_named.front().parent_path();
  std::vector<fs::path> named;
  for (const QString& file : m_around.dialogs.OpenFiles(tr("Choose sounds to import"), kit::TextOf(start), Filter(),
                                                        kit::HelpContext::Import))
    named.push_back(kit::PathOf(file));
  Open(named);
}

void ImportControl::AskForFolder() {
  const fs::path start = m_named.empty() ? m_around.folders.Documents() : m_named.front().parent_path();
  const QString folder = m_around.dialogs.ChooseFolder(tr("Choose a folder of sounds to import"), kit::TextOf(start),
                                                       kit::HelpContext::Import);
  if (!folder.isEmpty()) Open({kit::PathOf(folder)});
}

QString ImportControl::Filter() {
  QStringList patterns;
  for (const std::string_view ending : core::sound::EndingsOf(core::sound::SoundEnding::Readable))
    patterns.append("*." + QString::fromLatin1(ending.data(), static_cast<qsizetype>(ending.size())));
  const QString sounds = patterns.join(QLatin1Char(' '));
  return tr("All sounds (%1)").arg(sounds + " *.lsu *.zip") + ";;" + tr("ZIP files (%1)").arg("*.zip") + ";;" +
         tr("All files (%1)").arg("*");
}

void ImportControl::Stop() {
  if (m_isOpen) m_frame.hide();
}

void ImportControl::Close() {
  if (!m_isOpen) return;
  m_isOpen = false;
  m_maker.Stop();
  if (m_heard.id >= 0) emit stopRequested();
  m_making.clear();
  m_named.clear();
  m_slots.clear();
  m_model.Start(core::sound::kRoomOfAnEmptySet, {}, 0);
}

fs::path ImportControl::FolderFor(const fs::path& named) const {
  std::error_code ignored;
  fs::path name = fs::is_directory(named, ignored) ? named.filename() : named.parent_path().filename();
  if (core::sound::SourceList::HasArchiveName(named)) name = named.stem();
  // The root has no name, and an archive may have one that is none here.
  if (name.empty() || !core::base::WhyNoWindowsName(core::base::TextOf(name)).empty()) name = "Sounds";
  fs::path above = m_around.folders.Documents();
  if (above.empty()) above = named.parent_path();
  return Unused(above / kFolder / name);
}

void ImportControl::ChooseFolder() {
  fs::path start = m_folder;
  for (std::error_code ignored; start.has_relative_path() && !fs::is_directory(start, ignored);)
    start = start.parent_path();
  const QString folder = m_around.dialogs.ChooseFolder(tr("Choose the folder for the new sounds"), kit::TextOf(start),
                                                       kit::HelpContext::Import);
  if (folder.isEmpty()) return;
  m_folder = kit::PathOf(folder);
  m_frame.ShowFolder(m_folder);
}

void ImportControl::Listed(const fs::path& named, const std::vector<ImportSource>& sources, bool isLast) {
  if (!m_isOpen) return;
  std::vector<std::string> names;
  names.reserve(sources.size());
  for (const ImportSource& source : sources) names.push_back(NameIn(named, source.shownAs));
  m_isGuessStale = true;
  m_model.Add(sources, names, m_slots.front());
  m_slots.pop_front();
  if (isLast) m_frame.ShowWork(ImportFrame::Work::None);
}

void ImportControl::Made(int id, const ImportedSound& sound, const ImportOptions& with) {
  std::erase_if(m_making, [id](const SoundMaker::Order& order) { return order.id == id; });
  m_model.Take(id, sound, with);
  if (!m_making.empty() || !m_isGuessStale) return;
  // Now that all lengths are known.
  m_isGuessStale = false;
  m_model.Guess();
}

void ImportControl::MakeReady() {
  if (!m_isOpen) return;
  std::vector<SoundMaker::Order> wanted;
  for (const int id : m_model.Unready()) {
    const ImportRow& row = m_model.At(m_model.RowOf(id));
    wanted.push_back({id, row.source, m_model.OptionsOf(row)});
  }
  // All of it is under way: sounds that nobody waits for any more do no harm.
  const auto isUnderWay = [this](const SoundMaker::Order& order) {
    return std::any_of(m_making.begin(), m_making.end(), [&order](const SoundMaker::Order& one) {
      return one.id == order.id && one.options == order.options;
    });
  };
  if (std::all_of(wanted.begin(), wanted.end(), isUnderWay)) return;
  m_making = wanted;
  m_maker.Make(std::move(wanted));
}

void ImportControl::Play(int id, ImportModel::Half half) {
  if (m_heard.id == id && m_heard.half == half) {
    emit stopRequested();
    return SetPlaying({});
  }
  const int row = m_model.RowOf(id);
  if (row < 0) return;
  m_frame.ShowFailure({});
  const ImportRow& sound = m_model.At(row);
  if (half == ImportModel::Half::After || sound.IsTakenAsItIs()) return Hear(id, half, sound.result.path);
  m_maker.Copy(id, sound.source.file);
}

void ImportControl::Hear(int id, ImportModel::Half half, const fs::path& file) {
  m_heard = {};
  emit playRequested(file);
  m_heard = {id, half, file};
  m_model.SetPlaying(id, half);
}

void ImportControl::TellFailure(const QString& text) {
  if (m_isOpen) m_frame.ShowFailure(text);
}

void ImportControl::SetPlaying(const fs::path& path) {
  if (m_heard.id < 0 || path == m_heard.file) return;
  m_heard = {};
  m_model.SetPlaying(-1, ImportModel::Half::After);
}

void ImportControl::Import() {
  m_frame.ShowFailure({});
  m_frame.ShowWork(ImportFrame::Work::Importing);
  m_measured.clear();
  m_measuredRows.clear();
  if (m_frame.IsLevelled() && m_around.means.measure)
    Measure();
  else
    Keep();
}

void ImportControl::Measure() {
  std::vector<core::sound::Levelling::Sound> staying = core::sound::Levelling::SoundsOf(m_around.set);
  std::map<SlotKind, int> rows;
  std::vector<SoundMaker::Coming> coming;
  for (int i = 0; i < m_model.rowCount(); ++i) {
    const std::optional<SlotKind> slot = m_model.Destination(i);
    if (!slot) continue;
    const bool isList = core::sound::SlotOf(*slot).isList;
    const int position = isList ? m_around.set.Rows(*slot) + ++rows[*slot] : 1;
    if (!isList)
      std::erase_if(staying, [slot](const core::sound::Levelling::Sound& sound) { return sound.place.kind == *slot; });
    coming.push_back({{*slot, position}, m_model.At(i).result.path});
    m_measuredRows.push_back(m_model.At(i).id);
  }
  m_maker.Measure(std::move(staying), std::move(coming));
}

void ImportControl::Keep() {
  std::vector<SoundMaker::Made> files;
  for (const ImportRow& row : m_model.Rows())
    if (row.IsComing() && !row.IsTakenAsItIs()) files.push_back({row.id, row.result.path});
  m_maker.Keep(std::move(files), m_folder);
}

void ImportControl::Level(const SoundMaker::Kept& kept) {
  if (m_measured.size() < m_measuredRows.size()) return;
  const std::size_t first = m_measured.size() - m_measuredRows.size();
  for (std::size_t i = 0; i < m_measuredRows.size(); ++i)
    for (const SoundMaker::Made& file : kept)
      if (file.id == m_measuredRows[i]) m_measured[first + i].path = file.file;
  const core::sound::LevelPlan plan = core::sound::LevelPlan::Of(m_measured, m_around.balance());
  // A set of which a sound was refused is not the one that was measured: its volumes stay.
  static_cast<void>(core::sound::Levelling::Apply(plan, m_around.set));
}

void ImportControl::Take(const SoundMaker::Kept& kept) {
  const int count = m_model.Coming();
  const QString text = count == 1 ? tr("Import 1 sound") : tr("Import %1 sounds").arg(count);
  QStringList refused;
  bool isAnyInSet = false;
  {
    const core::sound::SoundSet::Group group(m_around.set, text.toStdString());
    for (int i = 0; i < m_model.rowCount(); ++i) {
      const ImportRow& row = m_model.At(i);
      const std::optional<SlotKind> slot = m_model.Destination(i);
      if (!slot) continue;
      const auto own =
          std::find_if(kept.begin(), kept.end(), [&row](const SoundMaker::Made& one) { return one.id == row.id; });
      const fs::path file = own == kept.end() ? row.source.file : own->file;
      if (const core::base::Result<> added = m_around.set.Add(*slot, file); !added)
        refused.append(QStringLiteral("%1: %2").arg(sound::FileName(file), kit::Translated(added.Text())));
      else
        isAnyInSet = true;
    }
    if (isAnyInSet) Level(kept);
  }
  const fs::path folder = m_folder;
  m_frame.hide();
  const QString sounds = count == 1 ? tr("1 sound was imported.") : tr("%1 sounds were imported.").arg(count);
  emit news(kept.empty() ? sounds : tr("%1 The new files are in \"%2\".").arg(sounds, kit::TextOf(folder)));
  emit imported(kept.empty() ? fs::path() : folder);
  if (!refused.isEmpty())
    m_around.dialogs.ShowError(tr("Some sounds did not go into their slots. They are in the folder."),
                               refused.join('\n'));
}

}  // namespace kestrin::ui::imports
