// SPDX-License-Identifier: MIT
#include "cli/AccelerometerBoard.h"
#include "cli/Commands.h"

namespace kestrin::cli {

namespace {

class AccelDefaultsCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "accel defaults"; }
  [[nodiscard]] std::string Description() const override { return "Put back the factory values"; }

  [[nodiscard]] Report Run(Context& context) override {
    AccelerometerBoard board(context);
    Report report = AccelerometerBoard::ReportOf(board.SetupToChange().RestoreDefaults(), kNotAccepted);
    if (board.Setup().Kept()) report.message = kStillKept;
    return report;
  }
};

}  // namespace

std::unique_ptr<Command> MakeAccelDefaultsCommand() { return std::make_unique<AccelDefaultsCommand>(); }

}  // namespace kestrin::cli
