// SPDX-License-Identifier: MIT
#include "cli/AccelerometerBoard.h"
#include "cli/CommandFailure.h"
#include "cli/Commands.h"

namespace kestrin::cli {

namespace {

class AccelRestoreCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "accel restore"; }
  [[nodiscard]] std::string Description() const override {
    return "Put back the parameters that an interrupted download has kept for this board";
  }

  [[nodiscard]] Report Run(Context& context) override {
    AccelerometerBoard board(context);
    core::motion::AccelerometerSetup& setup = board.SetupToChange();
    if (!setup.Kept())
      throw CommandFailure(
          ExitCode::Failed,
          "Nothing is kept for this board, so nothing was changed. \"kestrinctl accel get\" shows what it "
          "holds, \"kestrinctl accel defaults\" puts back the factory values.");
    Report report = AccelerometerBoard::ReportOf(setup.RestoreKept(), kNotAccepted);
    if (setup.Kept()) report.message = kStillKept;
    return report;
  }
};

}  // namespace

std::unique_ptr<Command> MakeAccelRestoreCommand() { return std::make_unique<AccelRestoreCommand>(); }

}  // namespace kestrin::cli
