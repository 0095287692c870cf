// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <filesystem>

#include "core/sound/SoundSet.h"

class QWidget;

namespace kestrin::ui::kit {
class CommandGate;
class Dialogs;
}  // namespace kestrin::ui::kit

namespace kestrin::ui::sound {
class SoundPage;
}

namespace kestrin::ui::window {

/// Finds the missing sounds of a set together with the person, who points at a folder or at a file.
class SoundLocator : public QObject {
  Q_OBJECT

 public:
  /// All must outlive the object.
  SoundLocator(core::sound::SoundSet& set, kit::Dialogs& dialogs, kit::CommandGate& gate, QObject* parent = nullptr);

  /// Looks when the page asks for it, and shows there and by `waitFrame` that it does.
  void Attach(sound::SoundPage& page, QWidget& waitFrame);

  /// Tells under this headline which sounds are missing, and looks for them as long as the person wants to.
  void Tell(QString headline);
  /// Asks for a folder, looks below it for all missing sounds, and tells which ones are missing still.
  void LocateAll() { Tell(Search()); }
  /// Asks for the file of this one.
  void LocateOne(const core::sound::SoundPlace& place);
  /// Ends a search that is under way; what it has found until then counts.
  void Stop() { m_stopped = true; }

 signals:
  /// A search is under way: nothing else may be started, but Stop() may be called. Then it is not any more.
  void searching(bool isSearching);
  /// A line for the person.
  void news(const QString& text);

 private:
  /// Returns what to tell about the sounds that are missing still, "" for nothing.
  [[nodiscard]] QString Search();
  /// Whether the whole folder was looked through.
  [[nodiscard]] bool LookBelow(const std::filesystem::path& folder);
  /// Where the person starts to look.
  [[nodiscard]] QString StartFolder(const std::filesystem::path& nearby) const;

  core::sound::SoundSet& m_set;
  kit::Dialogs& m_dialogs;
  kit::CommandGate& m_gate;
  bool m_stopped = false;
};

}  // namespace kestrin::ui::window
