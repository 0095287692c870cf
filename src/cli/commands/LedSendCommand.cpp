// SPDX-License-Identifier: MIT
#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/LedBoard.h"
#include "cli/LedReports.h"
#include "core/base/PathText.h"

namespace kestrin::cli {

namespace {

class LedSendCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "led send"; }
  [[nodiscard]] std::string Description() const override {
    return "Put a pulse of an LED settings file on the board and play it";
  }

  void Declare(Syntax& syntax) override {
    syntax.Text("PULSE", m_pulse, "idle or foc (flash on clash)", Syntax::Need::Required);
    syntax.Path("FILE", m_file, "LED settings file", Syntax::Need::Required);
  }

  [[nodiscard]] Report Run(Context& context) override {
    const bool idle = m_pulse == "idle";
    if (!idle && m_pulse != "foc")
      throw CommandFailure(ExitCode::WrongUsage, "\"" + m_pulse + "\" is no pulse. There are idle and foc.");
    LedBoard board(context);
    board.Read();
    core::ledsetup::LedSetup& setup = board.Setup();
    static_cast<void>(setup.LoadSettings(m_file));
    static_cast<void>(idle ? setup.SendPulse() : setup.SendFoc());
    board.RequireConfirmed("the pulse");
    const core::led::LED_Pulse& pulse = idle ? setup.State().IdlePulse : setup.State().FocPulse;
    Report report = ReportOfSentPulse(m_pulse, pulse);
    if (pulse.IsTooLongForBoard()) report.message = core::led::LED_Pulse::kTooLong;
    return report;
  }

 private:
  std::string m_pulse;
  std::filesystem::path m_file;
};

}  // namespace

std::unique_ptr<Command> MakeLedSendCommand() { return std::make_unique<LedSendCommand>(); }

}  // namespace kestrin::cli
