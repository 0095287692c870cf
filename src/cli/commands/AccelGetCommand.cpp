// SPDX-License-Identifier: MIT
#include "cli/AccelerometerBoard.h"
#include "cli/Commands.h"

namespace kestrin::cli {

namespace {

class AccelGetCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "accel get"; }
  [[nodiscard]] std::string Description() const override { return "Read the detection parameters"; }

  [[nodiscard]] Report Run(Context& context) override {
    AccelerometerBoard board(context);
    Report report = AccelerometerBoard::ReportOf(board.Setup().Read(), "The board did not answer.");
    if (board.Setup().Kept())
      report.message =
          "An interrupted download has left this board's own parameters on this computer. \"kestrinctl accel restore\" "
          "or "
          "the next download puts them back.";
    return report;
  }
};

}  // namespace

std::unique_ptr<Command> MakeAccelGetCommand() { return std::make_unique<AccelGetCommand>(); }

}  // namespace kestrin::cli
