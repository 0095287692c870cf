// SPDX-License-Identifier: MIT
#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/LedBoard.h"
#include "cli/LedTypes.h"
#include "cli/ProgramFolder.h"
#include "core/base/Text.h"

namespace kestrin::cli {

namespace {

class LedConfigCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "led config"; }
  [[nodiscard]] std::string Description() const override {
    return "Tell the board which LED is fitted, and its overdrive";
  }

  void Declare(Syntax& syntax) override {
    m_type.Declare(syntax);
    syntax.Flag("--yes", m_yes, "This LED is the one that is fitted");
  }

  [[nodiscard]] Report Run(Context& context) override {
    m_type.Require();
    if (!m_yes) {
      std::string warning;
      for (const std::string_view line : core::base::Split(core::ledsetup::LedSetup::kWarning, "\r\n"))
        warning.append(line).append("\n");
      throw CommandFailure(ExitCode::WrongUsage,
                           warning + "Nothing was sent. Repeat the command with --yes if you are.");
    }
    LedBoard board(context);
    const std::string note = m_type.Apply(board.Setup(), ProgramFolder(context.options));
    board.Setup().UpdateLED();
    board.RequireConfirmed("the LED type");
    if (const core::base::Result<>& reading = board.Setup().State().reading; !reading)
      throw CommandFailure(ExitCode::Failed,
                           "The board has taken the LED type, but then it did not tell what it holds.", reading.Text());
    Report report = board.Status();
    report.message = note;
    return report;
  }

 private:
  LedTypeChoice m_type;
  bool m_yes = false;
};

}  // namespace

std::unique_ptr<Command> MakeLedConfigCommand() { return std::make_unique<LedConfigCommand>(); }

}  // namespace kestrin::cli
