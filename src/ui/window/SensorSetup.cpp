// SPDX-License-Identifier: MIT
#include "ui/window/SensorSetup.h"

#include <functional>
#include <optional>
#include <utility>

#include "core/device/DeviceSession.h"
#include "ui/kit/CommandGate.h"
#include "ui/kit/TopicOf.h"
#include "ui/motion/ConfigControl.h"
#include "ui/motion/ConfigFrame.h"
#include "ui/motion/SensorControl.h"
#include "ui/window/GateRunner.h"
#include "ui/window/Surroundings.h"

namespace kestrin::ui::window {

using Control = motion::ConfigControl;

SensorSetup::SensorSetup(core::device::DeviceSession& session, const Surroundings& around, QObject* parent)
    : QObject(parent), m_frame(new motion::ConfigFrame) {
  kit::SetHelpContext(*m_frame, kit::HelpContext::ConfigFrame);
  const auto run = GateRunner(around.gate);
  // Ahead of the control: what the board did not tell of itself at first is asked again before anything is sent.
  connect(m_frame, &motion::ConfigFrame::sendRequested, this,
          [run, &session] { run([&session] { static_cast<void>(session.EnsureIdentified()); }); });
  const auto lookup = [&session]() -> std::optional<Control::Board> {
    core::device::TLS* const board = session.Board();
    const core::device::SessionState& state = session.State();
    if (board == nullptr || !state.IsOnline() || state.deviceType != core::device::DeviceType::SoundBoard)
      return std::nullopt;
    return Control::Board{*board, state.serialNumber, state.deviceRevision, state.IsIdentified()};
  };
  m_control = new Control(*m_frame, {around.dialogs, around.kept, lookup, run});
  m_control->setParent(m_frame);
  connect(m_control, &Control::news, this, &SensorSetup::news);
  const auto sensorLookup = [lookup]() -> core::device::TLS* {
    const std::optional<Control::Board> board = lookup();
    return board ? &board->tls : nullptr;
  };
  const auto ask = [run, &session](std::function<void()> question) {
    run([&session, question = std::move(question)] {
      question();
      session.ExpectLateAnswer();
    });
  };
  new motion::SensorControl(
      *m_frame, {around.clock, sensorLookup, [&gate = around.gate] { return gate.IsBusy(); }, ask}, m_frame);
}

void SensorSetup::Open() { m_control->Open(); }

void SensorSetup::Hide() { m_frame->hide(); }

void SensorSetup::ReadAccData() { m_control->ReadAccData(); }

std::optional<core::device::AccParam> SensorSetup::Held() const { return m_control->Held(); }

bool SensorSetup::MayClose() { return m_control->MayClose(); }

}  // namespace kestrin::ui::window
