// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QObject>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "core/sound/RecentSets.h"
#include "core/sound/SoundSet.h"
#include "ui/window/SoundLocator.h"

class QSettings;

namespace kestrin::ui::kit {
class CommandGate;
class Dialogs;
}  // namespace kestrin::ui::kit

namespace kestrin::ui::window {

class PackedSets;

/// The set of sounds as a file: opens and saves it, remembers the recent ones, asks before an unsaved set is lost or
/// missing sounds are.
class SetFile : public QObject {
  Q_OBJECT

 public:
  /// All must outlive the object. `settings` keeps the recent sets; `example` is a set to try, and need not be there;
  /// `packed` packs sets and unpacks them.
  SetFile(core::sound::SoundSet& set, kit::Dialogs& dialogs, core::base::Disk& disk, kit::CommandGate& gate,
          QSettings& settings, std::filesystem::path example, PackedSets& packed, QObject* parent = nullptr);

  /// The files of the recent sets, as those settings keep them.
  [[nodiscard]] static std::vector<std::filesystem::path> RecentSets(const QSettings& settings);
  /// "New set", the set to try and the recent sets.
  [[nodiscard]] QMenu& Menu() { return m_menu; }
  /// What can be done with the set beside saving it: packing it with its sounds.
  [[nodiscard]] QMenu& SaveMenu() { return m_saveMenu; }
  /// What finds the missing sounds of the set.
  [[nodiscard]] SoundLocator& Locator() { return m_locator; }

  /// Asks for a file and opens it.
  void Open();
  /// Opens this file; the person is asked before an unsaved set is lost. A packed set is unpacked for good, and opened
  /// from there.
  void OpenPath(const std::filesystem::path& path);
  /// Brings back what was not saved of the set whose file is `origin`, from the configuration `unsaved`; see
  /// SoundSet::BringBack(). False when it is not valid, which the person is told.
  [[nodiscard]] bool BringBack(const std::filesystem::path& unsaved, const std::filesystem::path& origin);
  /// Opens the set in this file as one that is not saved yet, after the same question.
  void OpenCopy(const std::filesystem::path& path);
  /// Asks for the file of a set; empty when the person thought better of it.
  [[nodiscard]] std::filesystem::path AskForSet(const QString& title);
  /// Lets others put more into the menu, behind the sets.
  void SetMore(std::function<void(QMenu&)> more);
  /// The files of the sets that were used last.
  [[nodiscard]] const std::vector<std::filesystem::path>& Recent() const { return m_recent.Paths(); }
  /// Sets that have just come: the person may open one of them at once.
  void OfferNew(const std::vector<std::filesystem::path>& paths);
  /// Asks for a file name and saves. False when it was not saved.
  bool Save();
  /// Saves the set to its file without asking for a name; one that has no file yet as Save() does.
  bool SaveNamed();
  /// Asks for a file name and packs the set with its sounds.
  void Pack();
  /// An empty set.
  void New();
  /// True when the set is saved, or may be lost.
  [[nodiscard]] bool MayLose();

 signals:
  /// A set is being loaded: nothing else may be started. Then it is not any more.
  void loading(bool isLoading);
  /// Another set is there, from a file or a new one.
  void opened();
  /// A line for the person.
  void news(const QString& text);
  /// What was to be opened is a ZIP file without a set in it: there may be sounds to import.
  void noSet(const std::filesystem::path& path);

 private:
  /// Which files the dialogs offer.
  [[nodiscard]] static QString Filter();
  void Load(const std::filesystem::path& path, bool isCopy = false);
  /// Lets the set load something, and tells of it.
  core::sound::LoadResult LoadBy(const std::function<core::sound::LoadResult(const core::base::EventPump& pump)>& load);
  /// Tells what became of a load, when everything that follows from it is done.
  void Tell(const core::sound::LoadResult& result);
  void OpenPacked(const std::filesystem::path& path);
  void FillSaveMenu();
  /// What becomes of the missing sounds when the set is saved; none when it shall not be saved.
  [[nodiscard]] std::optional<core::sound::SoundSet::Missing> AskMissing();
  bool Write(const std::filesystem::path& path, core::sound::SoundSet::Missing missing);
  void Remember(const std::filesystem::path& path);
  void FillMenu();
  /// Lets the menu's entry open that set.
  void ConnectTo(QAction& action, const std::filesystem::path& path);
  /// Where a file dialog begins: the set's file, or a folder that exists.
  [[nodiscard]] QString StartPlace() const;

  core::sound::SoundSet& m_set;
  kit::Dialogs& m_dialogs;
  core::base::Disk& m_disk;
  kit::CommandGate& m_gate;
  QSettings& m_settings;
  std::filesystem::path m_example;
  SoundLocator m_locator;
  core::sound::RecentSets m_recent;
  PackedSets& m_packed;
  QMenu m_menu;
  QMenu m_saveMenu;
  std::function<void(QMenu&)> m_more;
};

}  // namespace kestrin::ui::window
