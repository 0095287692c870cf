// SPDX-License-Identifier: MIT
#include "ui/motion/SensorControl.h"

#include <QEvent>
#include <algorithm>
#include <utility>

#include "ui/kit/Translated.h"
#include "ui/motion/ConfigFrame.h"

namespace kestrin::ui::motion {

namespace {

using namespace std::chrono_literals;

/// From one look at a board that is not asked to the next.
constexpr std::chrono::milliseconds kPatience = 100ms;

}  // namespace

SensorControl::SensorControl(ConfigFrame& frame, Surroundings around, QObject* parent)
    : QObject(parent), m_frame(frame), m_around(std::move(around)), m_timer(this) {
  m_timer.setObjectName("SensorTimer");
  m_timer.setSingleShot(true);
  // A coarse one may be early, and the question would wait for the next turn.
  m_timer.setTimerType(Qt::PreciseTimer);
  connect(&m_timer, &QTimer::timeout, this, &SensorControl::Look);
  connect(&frame, &ConfigFrame::startAgainRequested, this, &SensorControl::RestartTrial);
  connect(&frame, &ConfigFrame::askAgainRequested, this, &SensorControl::AskAgain);
  frame.installEventFilter(this);
}

bool SensorControl::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &m_frame && event->type() == QEvent::Show) Begin();
  if (watched == &m_frame && event->type() == QEvent::Hide) m_timer.stop();
  return QObject::eventFilter(watched, event);
}

void SensorControl::Begin() {
  m_record = {};
  m_watch.reset();
  m_board = 0;
  Show();
  SayRest();
  // Not from here: the panel is only about to be shown.
  QMetaObject::invokeMethod(this, &SensorControl::Look, Qt::QueuedConnection);
}

void SensorControl::LookAfter(core::base::Clock::Duration time) {
  // Rounded up: a moment too early would cost a whole turn.
  m_timer.start(std::chrono::ceil<std::chrono::milliseconds>(std::max(time, core::base::Clock::Duration(1ms))));
}

void SensorControl::Look() {
  if (!m_frame.isVisible()) return;
  LookAfter(kPatience);
  if (!m_frame.IsSensorSeen()) return;
  const core::device::TLS* const board = m_around.board();
  if (board == nullptr)
    return m_frame.SaySensor(
        tr("No board is connected. Plug it in to see what it feels; the sliders stay as they are."));
  if (board->ClassDebugID() == m_silent) return m_frame.SaySensor(m_silence, true);
  if (m_around.isBusy()) return;
  if (IsDue(*board)) m_around.run([this] { Ask(); });
  // The panel may have been closed while the board was asked.
  if (m_watch && m_timer.isActive()) LookAfter(m_watch->UntilNext());
}

bool SensorControl::IsDue(const core::device::TLS& board) const {
  return board.ClassDebugID() != m_board || m_watch->UntilNext() <= core::base::Clock::Duration{};
}

void SensorControl::Ask() {
  core::device::TLS* const board = m_around.board();
  if (board == nullptr) return;
  if (const std::int32_t number = board->ClassDebugID(); number != m_board) {
    m_board = number;
    m_record = {};
    m_watch = std::make_shared<core::motion::SensorWatch>(*board, m_around.clock);
  }
  const std::shared_ptr<core::motion::SensorWatch> watch = m_watch;
  const auto reading = watch->Read();
  // The panel was closed and opened again meanwhile.
  if (watch != m_watch) return;
  if (!reading) {
    m_silent = std::exchange(m_board, 0);
    m_silence = kit::Translated(reading.Text());
    m_watch.reset();
    return m_frame.SaySensor(m_silence, true);
  }
  m_record.Add(*reading);
  SayRest();
  Show();
}

void SensorControl::SayRest() {
  m_frame.SaySensor(m_record.KnowsRest() ? QString() : tr("Hold the saber still for a moment."));
}

void SensorControl::Show() { m_frame.ShowSensor(m_record); }

void SensorControl::RestartTrial() {
  m_record.RestartTrial();
  Show();
}

void SensorControl::AskAgain() {
  m_silent = 0;
  m_frame.SaySensor({});
  LookAfter({});
}

}  // namespace kestrin::ui::motion
