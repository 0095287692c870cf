// SPDX-License-Identifier: MIT
#include "ui/window/LinkDoctor.h"

#include <QPointer>
#include <functional>
#include <optional>
#include <utility>

#include "core/device/DeviceSession.h"
#include "ui/doctor/DoctorControl.h"
#include "ui/doctor/DoctorFrame.h"
#include "ui/window/GateRunner.h"
#include "ui/window/Surroundings.h"

namespace kestrin::ui::window {

using doctor::DoctorControl;

LinkDoctor::LinkDoctor(core::device::DeviceSession& session, const Surroundings& around, const kit::Pictures& pictures,
                       QObject* parent)
    : QObject(parent), m_frame(new doctor::DoctorFrame(pictures)) {
  if (around.doctor == nullptr) return;
  const auto lookup = [&session]() -> std::optional<DoctorControl::Board> {
    core::device::TLS* const board = session.Board();
    if (board == nullptr) return std::nullopt;
    const core::device::SessionState& state = session.State();
    return DoctorControl::Board{*board, state.IsOnline(), state.isFinishing};
  };
  const auto run = [this, &session, whenFree = GateRunner(around.gate)](std::function<void()> ask) {
    whenFree([self = QPointer(this), &session, ask = std::move(ask)] {
      ask();
      if (self != nullptr) session.ExpectLateAnswer();
    });
  };
  m_control = new DoctorControl(*m_frame, {*around.doctor, lookup, run}, m_frame);
}

void LinkDoctor::Open() {
  if (IsThere()) m_control->Open();
}

void LinkDoctor::Follow() {
  if (IsThere()) m_control->Follow();
}

void LinkDoctor::Stop() {
  if (IsThere()) m_control->Stop();
}

}  // namespace kestrin::ui::window
