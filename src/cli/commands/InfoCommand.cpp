// SPDX-License-Identifier: MIT
#include "cli/Commands.h"
#include "cli/OnlineBoard.h"
#include "cli/TextTable.h"
#include "core/device/BoardIdentity.h"

namespace kestrin::cli {

namespace {

class InfoCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "info"; }
  [[nodiscard]] std::string Description() const override { return "Identify the board"; }

  [[nodiscard]] Report Run(Context& context) override {
    const OnlineBoard online(context);
    online.RequireIdentity();
    const core::device::SessionState& board = online.State();
    const std::string model(core::device::Identify(board.id).model);
    const int type = static_cast<int>(board.deviceType);

    Report report;
    report.document = {{"id", board.id},
                       {"model", model},
                       {"deviceType", type},
                       {"deviceRevision", board.deviceRevision},
                       {"memoryCapacity", board.memoryCapacity},
                       {"serial", board.serialNumber},
                       {"caption", board.serialLabel}};
    report.text = board.serialLabel + "\n\n" +
                  AlignedPairs({{"Model", model},
                                {"Identity", std::to_string(board.id)},
                                {"Revision", std::to_string(board.deviceRevision)},
                                {"Memory", std::to_string(board.memoryCapacity) + " samples"}});
    if (!online.Answered()) {
      report.code = ExitCode::Failed;
      report.message = "The board did not answer.";
    }
    return report;
  }
};

}  // namespace

std::unique_ptr<Command> MakeInfoCommand() { return std::make_unique<InfoCommand>(); }

}  // namespace kestrin::cli
