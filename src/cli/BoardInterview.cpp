// SPDX-License-Identifier: MIT
#include "cli/BoardInterview.h"

#include "cli/CommandFailure.h"
#include "core/device/DeviceSession.h"
#include "platform/boards/BoardAgent.h"

namespace kestrin::cli {

namespace {

using core::doctor::Answers;

/// A session that waits for nobody.
class ImpatientView final : public core::device::SessionView {
 public:
  void ShowState(const core::device::SessionState&) override {}
  void ShowMessage(const std::string&, const std::string&) override {}
  [[nodiscard]] bool AskWorkOffline(const std::string&, const std::string&) override { return false; }
  [[nodiscard]] bool WaitForBoard(const std::string&) override { return false; }
  void StartGoOnlineTimer(std::int32_t) override {}
  void StopGoOnlineTimer() override {}
};

}  // namespace

BoardInterview InterviewBoard(Context& context) {
  core::base::SystemClock clock;
  auto made = platform::boards::MakeBoardAgent(context.board, clock, context.interrupt.Pump(), context.disk);
  if (!made) throw CommandFailure(ExitCode::Failed, made.Text());
  const std::unique_ptr<core::device::THIDagent> agent = *std::move(made);
  ImpatientView view;
  core::device::DeviceSession session(*agent, view);
  static_cast<void>(session.SearchAtStartUp());
  core::device::TLS* const board = session.Board();
  if (board == nullptr) return {std::nullopt, agent->AccessProblem()};

  Answers answers;
  // The session has asked already: one that did not answer is not asked once more.
  if (session.State().knowsId) {
    answers = core::doctor::Interview(*board, clock, [&] {
      context.interrupt.Look();
      return true;
    });
  } else {
    answers.written = board->OwesAnswer();
  }
  // Who has stopped answering may not even take a good-bye.
  if (answers.answered && !board->OwesAnswer()) session.Exit();
  return {answers, ""};
}

}  // namespace kestrin::cli
