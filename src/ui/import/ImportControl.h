// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "core/sound/SoundSet.h"
#include "ui/import/ImportModel.h"
#include "ui/import/SoundMaker.h"

namespace kestrin::ui::kit {
class Dialogs;
class SpecialFolders;
}  // namespace kestrin::ui::kit

namespace kestrin::ui::imports {

class ImportFrame;

/// Does what the sheet "Import sounds" is for: has the sounds found and made ready, plays what the person wants to
/// hear, and puts what they take into the folder and into the set, in one step to undo.
class ImportControl : public QObject {
  Q_OBJECT

 public:
  /// The folder below the person's documents in which imports get folders of their own.
  static constexpr const char* kFolder = "Kestrin sounds";

  struct Around {
    ImportMeans means;
    core::sound::SoundSet& set;
    kit::Dialogs& dialogs;
    const kit::SpecialFolders& folders;
    /// How loud the slots shall be against one another.
    std::function<core::sound::Balance()> balance = [] { return core::sound::Balance(); };
  };

  /// Sheet and model must outlive the object.
  ImportControl(ImportFrame& frame, ImportModel& rows, Around around, QObject* parent = nullptr);

  /// Opens the sheet with the sounds in these files, folders and archives, all for one slot when that is given. Where
  /// the sheet is open they come to those that are there.
  void Open(const std::vector<std::filesystem::path>& named, std::optional<core::sound::SlotKind> slot = {});
  /// Asks for files, and opens the sheet with them; or for a folder.
  void AskForFiles();
  void AskForFolder();
  /// The sheet closes, and whatever goes on ends.
  void Stop();
  /// Tells that a sound could not be played.
  void TellFailure(const QString& text);
  /// Shows what is heard now; empty: nothing.
  void SetPlaying(const std::filesystem::path& path);
  /// What a file dialog shows of sounds that can be imported.
  [[nodiscard]] static QString Filter();

 signals:
  void playRequested(const std::filesystem::path& path);
  void stopRequested();
  void news(const QString& text);
  /// Sounds are in the set, or in that folder only.
  void imported(const std::filesystem::path& folder);

 private:
  /// A copy that can be heard.
  struct Heard {
    int id = -1;
    ImportModel::Half half = ImportModel::Half::After;
    std::filesystem::path file;
  };

  void Start();
  void Close();
  void Listed(const std::filesystem::path& named, const std::vector<core::sound::ImportSource>& sources, bool isLast);
  void Made(int id, const core::sound::ImportedSound& sound, const core::sound::ImportOptions& with);
  /// Has made ready what is not, unless just that is under way.
  void MakeReady();
  void Play(int id, ImportModel::Half half);
  void Hear(int id, ImportModel::Half half, const std::filesystem::path& file);
  void ChooseFolder();
  void Import();
  /// Has the sounds measured that the set will hold, so that their volumes can be levelled.
  void Measure();
  void Keep();
  /// Sets the volumes of the set, whose new sounds are these files now.
  void Level(const SoundMaker::Kept& kept);
  void Take(const SoundMaker::Kept& kept);
  /// Where the sounds of what was named first go, unless the person chooses another folder.
  [[nodiscard]] std::filesystem::path FolderFor(const std::filesystem::path& named) const;

  ImportFrame& m_frame;
  ImportModel& m_model;
  Around m_around;
  SoundMaker m_maker;
  bool m_isOpen = false;
  std::vector<std::filesystem::path> m_named;
  /// For which slots the sounds are meant that are still looked for.
  std::deque<std::optional<core::sound::SlotKind>> m_slots;
  std::filesystem::path m_folder;
  /// What is being made ready, by rows, with what.
  std::vector<SoundMaker::Order> m_making;
  /// Sounds that have come since their slots were guessed.
  bool m_isGuessStale = false;
  Heard m_heard;
  /// Of the import that is under way: the sounds of the set as it will be, the last of which are those of these rows.
  SoundMaker::Measured m_measured;
  std::vector<int> m_measuredRows;
};

}  // namespace kestrin::ui::imports
