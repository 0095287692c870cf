#include "cli/OnlineBoard.h"

#include <exception>

#include "cli/Agents.h"
#include "cli/CommandFailure.h"

namespace kestrin::cli {

OnlineBoard::OnlineBoard(Context& context)
    : m_agent(MakeAgent(context.board, m_clock, context.interrupt.Pump())), m_session(*m_agent, m_view) {
  if (m_session.SearchAtStartUp() == device::DeviceSession::StartUp::Online) return;
  // A board that may not be opened is there: another failure, with a way out of its own.
  if (!m_view.accessProblem.empty()) throw CommandFailure(ExitCode::Failed, m_view.accessProblem);
  throw CommandFailure(ExitCode::NoBoard, "A connection with Kuskekpize could not be established.");
}

OnlineBoard::~OnlineBoard() {
  try {
    m_session.Exit();
  } catch (const std::exception&) {
    // A good-bye that is not heard harms nobody.
  }
}

void OnlineBoard::RequireSoundBoard() const {
  if (m_session.DeviceType() != device::DeviceType::SoundBoard)
    throw CommandFailure(
        ExitCode::Failed,
        "This board is an LED driver: it has no sounds and no acceleration sensor. Choose a sound board "
        "with --board.");
}

}  // namespace kestrin::cli
