// SPDX-License-Identifier: MIT
#include "cli/Commands.h"
#include "cli/LedBoard.h"

namespace kestrin::cli {

namespace {

class LedStatusCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "led status"; }
  [[nodiscard]] std::string Description() const override { return "Show what the LED driver holds"; }

  [[nodiscard]] Report Run(Context& context) override {
    LedBoard board(context);
    board.Read();
    return board.Status();
  }
};

}  // namespace

std::unique_ptr<Command> MakeLedStatusCommand() { return std::make_unique<LedStatusCommand>(); }

}  // namespace kestrin::cli
