// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

namespace kestrin::core::device {
class DeviceSession;
}
namespace kestrin::ui::kit {
class CommandGate;
}

namespace kestrin::ui::window {

/// Lets the session look after its boards from time to time: for those that are plugged in and out, and while it is
/// offline for one that answers. Never while something else talks to the board.
class BoardWatch : public QObject {
  Q_OBJECT

 public:
  /// Both must outlive the object. Nothing is looked at before Start().
  BoardWatch(core::device::DeviceSession& session, kit::CommandGate& gate, QObject* parent = nullptr);

  void Start() { m_noticeTimer.start(); }
  void Stop();
  /// `GoOnlineTimer`, which the session starts and stops.
  void StartGoOnlineTimer(int milliseconds) { m_goOnlineTimer.start(milliseconds); }
  void StopGoOnlineTimer() { m_goOnlineTimer.stop(); }

 private:
  void TickGoOnline();
  void LookForNotices();

  core::device::DeviceSession& m_session;
  kit::CommandGate& m_gate;
  QTimer m_goOnlineTimer;
  QTimer m_noticeTimer;
};

}  // namespace kestrin::ui::window
