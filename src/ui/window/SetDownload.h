// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "core/sound/Download.h"

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
  SetDownload(core::sound::LSU_Configuration& configuration, core::device::DeviceSession& session,
              const Surroundings& around, QObject* parent = nullptr);

  /// For whoever lays it over the window, which owns it then.
  [[nodiscard]] sound::DownloadFrame& Frame() const { return *m_frame; }
  /// The whole download, in front of which the computer does not fall asleep.
  void Send();
  [[nodiscard]] bool IsRunning() const { return m_download.IsRunning(); }
  /// Stops it without a question. Does nothing when none is running.
  void Cancel() { m_download.Cancel(); }
  /// Whether the window may be closed: asks while a download is running.
  [[nodiscard]] bool MayClose();
  /// The person clicked beside the frame.
  void ClickBeside();

 signals:
  /// A download is running: set and board must stay as they are. Then it is not any more.
  void running(bool isRunning);

 private:
  core::device::DeviceSession& m_session;
  kit::CommandGate& m_gate;
  kit::Dialogs& m_dialogs;
  kit::SleepBlocker& m_sleep;
  sound::DownloadFrame* m_frame;
  core::sound::Download m_download;
};

}  // namespace kestrin::ui::window
