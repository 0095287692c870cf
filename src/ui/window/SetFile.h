// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QObject>
#include <filesystem>
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

/// The set of sounds as a file: opens and saves it, remembers the recent ones, asks before an unsaved set is lost or
/// missing sounds are.
class SetFile : public QObject {
  Q_OBJECT

 public:
  /// All must outlive the object. `settings` keeps the recent sets; `example` is a set to try, and need not be there.
  SetFile(core::sound::SoundSet& set, kit::Dialogs& dialogs, core::base::Disk& disk, kit::CommandGate& gate,
          QSettings& settings, std::filesystem::path example, QObject* parent = nullptr);

  /// "New set", the set to try and the recent sets.
  [[nodiscard]] QMenu& Menu() { return m_menu; }
  /// What finds the missing sounds of the set.
  [[nodiscard]] SoundLocator& Locator() { return m_locator; }

  /// Asks for a file and opens it.
  void Open();
  /// Opens this file; the person is asked before an unsaved set is lost.
  void OpenPath(const std::filesystem::path& path);
  /// Sets that have just come: the person may open one of them at once.
  void OfferNew(const std::vector<std::filesystem::path>& paths);
  /// Asks for a file name and saves. False when it was not saved.
  bool Save();
  /// Saves the set to its file without asking for a name; one that has no file yet as Save() does.
  bool SaveNamed();
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

 private:
  /// Which files the dialogs offer.
  [[nodiscard]] static QString Filter();
  void Load(const std::filesystem::path& path);
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
  QMenu m_menu;
};

}  // namespace kestrin::ui::window
