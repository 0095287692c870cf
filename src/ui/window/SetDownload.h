// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "core/sound/Download.h"
#include "core/sound/SoundSet.h"
#include "core/sound/board/BoardHistory.h"

namespace kestrin::core::device {
class DeviceSession;
}
namespace kestrin::ui::kit {
class CommandGate;
class Dialogs;
class SleepBlocker;
}  // namespace kestrin::ui::kit
namespace kestrin::ui::sound {
class DownloadFrame;
}

namespace kestrin::ui::window {

struct Surroundings;

/// The way of the set into the board of the session, in its frame.
class SetDownload : public QObject {
  Q_OBJECT

 public:
  /// All must outlive the object.
  SetDownload(core::sound::LSU_Configuration& configuration, const core::sound::SoundSet& set,
              core::device::DeviceSession& session, const Surroundings& around, QObject* parent = nullptr);

  /// For whoever lays it over the window, which owns it then.
  [[nodiscard]] sound::DownloadFrame& Frame() const { return *m_frame; }
  /// The same as SendAgain(), unless the board holds the set already: then it says so instead.
  void Send();
  /// The whole download, in front of which the computer does not fall asleep. A successful one goes into the board's
  /// history.
  void SendAgain();
  [[nodiscard]] bool IsRunning() const { return m_download.IsRunning(); }
  /// Stops it without a question, also while it only looks whether the board holds the set. Does nothing when none is
  /// running.
  void Cancel();
  /// Whether the window may be closed: asks while a download is running.
  [[nodiscard]] bool MayClose();
  /// The person clicked beside the frame.
  void ClickBeside();

 signals:
  /// A download is running: set and board must stay as they are. Then it is not any more.
  void running(bool isRunning);
  /// From now on something is written into the board; then that has ended, however.
  void writing(bool isWriting);
  /// A line for the person.
  void news(const QString& text);

 private:
  /// Whether the board holds just this set, as far as it can be told within a second.
  [[nodiscard]] bool IsHeld();
  /// One run; `always`: also when the board holds the set.
  void Run(bool always);
  void Remember();

  core::sound::LSU_Configuration& m_configuration;
  const core::sound::SoundSet& m_set;
  core::device::DeviceSession& m_session;
  kit::CommandGate& m_gate;
  kit::Dialogs& m_dialogs;
  kit::SleepBlocker& m_sleep;
  sound::DownloadFrame* m_frame;
  core::sound::Download m_download;
  /// While it is looked whether the board holds the set: nothing is to be sent any more.
  bool m_isStopped = false;
  /// Whether boards are asked what they hold, and what they get is kept.
  bool m_isKnowing;
  core::sound::BoardHistory m_history;
};

}  // namespace kestrin::ui::window
