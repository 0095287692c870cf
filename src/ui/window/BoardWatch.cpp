// SPDX-License-Identifier: MIT
#include "ui/window/BoardWatch.h"

#include "core/device/DeviceSession.h"
#include "ui/kit/CommandGate.h"

namespace kestrin::ui::window {

namespace {

/// How often plugging and unplugging is asked for, in milliseconds.
constexpr int kNoticeInterval = 250;

}  // namespace

BoardWatch::BoardWatch(core::device::DeviceSession& session, kit::CommandGate& gate, QObject* parent)
    : QObject(parent), m_session(session), m_gate(gate), m_goOnlineTimer(this), m_noticeTimer(this) {
  m_goOnlineTimer.setObjectName("GoOnlineTimer");
  m_noticeTimer.setObjectName("NoticeTimer");
  m_noticeTimer.setInterval(kNoticeInterval);
  connect(&m_goOnlineTimer, &QTimer::timeout, this, &BoardWatch::TickGoOnline);
  connect(&m_noticeTimer, &QTimer::timeout, this, &BoardWatch::LookForNotices);
}

void BoardWatch::Stop() {
  m_goOnlineTimer.stop();
  m_noticeTimer.stop();
}

void BoardWatch::TickGoOnline() {
  // While the window starts up, nobody looks for notices either.
  if (m_gate.IsBusy() || !m_noticeTimer.isActive()) return;
  const kit::CommandGate::Passage passage(m_gate);
  m_session.GoOnlineTimerTick();
}

void BoardWatch::LookForNotices() {
  if (m_gate.IsBusy()) return;
  const kit::CommandGate::Passage passage(m_gate);
  m_session.LookForNotices();
}

}  // namespace kestrin::ui::window
