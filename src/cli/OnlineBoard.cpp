// SPDX-License-Identifier: MIT
#include "cli/OnlineBoard.h"

#include <exception>
#include <utility>

#include "cli/CommandFailure.h"
#include "cli/Interrupt.h"
#include "platform/boards/BoardAgent.h"

namespace kestrin::cli {

namespace {

std::unique_ptr<core::device::THIDagent> AgentOf(Context& context, core::base::Clock& clock) {
  auto made = platform::boards::MakeBoardAgent(context.board, clock, context.interrupt.Pump(), context.disk);
  if (!made) throw CommandFailure(ExitCode::Failed, made.Text());
  return *std::move(made);
}

}  // namespace

OnlineBoard::OnlineBoard(Context& context)
    : m_progress(context.options, m_clock),
      m_agent(AgentOf(context, m_clock)),
      m_view(m_progress),
      m_session(*m_agent, m_view) {
  const bool online = m_session.SearchAtStartUp() == core::device::DeviceSession::StartUp::Online;
  m_progress.End();
  if (online) return;
  // A board that may not be opened is there: another failure, with a way out of its own.
  if (!State().accessProblem.empty()) throw CommandFailure(ExitCode::Failed, State().accessProblem);
  const std::string& passedOver = State().passedOver;
  throw CommandFailure(
      ExitCode::NoBoard,
      "A connection with Kuskekpize could not be established.\nPlug the board in and try again. \"kestrinctl "
      "devices\" lists the boards that are found." +
          (passedOver.empty() ? "" : "\n" + passedOver));
}

OnlineBoard::~OnlineBoard() {
  try {
    if (Interrupt::Requested()) m_session.Hurry();
    m_session.Exit();
  } catch (const std::exception&) {
    // A good-bye that is not heard harms nobody.
  }
}

void OnlineBoard::RequireIdentity() const {
  if (!State().knowsId) throw CommandFailure(ExitCode::Failed, State().Identified().Text());
}

void OnlineBoard::RequireIdentified() const {
  if (!State().IsIdentified()) throw CommandFailure(ExitCode::Failed, State().Identified().Text());
}

void OnlineBoard::RequireSoundBoard() const {
  RequireIdentity();
  if (State().deviceType != core::device::DeviceType::SoundBoard)
    throw CommandFailure(
        ExitCode::Failed,
        "This board is an LED driver: it has no sounds and no acceleration sensor. Choose a sound board "
        "with --board.");
}

void OnlineBoard::RequireLedDriver() const {
  RequireIdentity();
  if (State().deviceType != core::device::DeviceType::LedDriver)
    throw CommandFailure(ExitCode::Failed,
                         "This board is a sound board: it has no LEDs to set up. Choose an LED driver with --board.");
}

}  // namespace kestrin::cli
