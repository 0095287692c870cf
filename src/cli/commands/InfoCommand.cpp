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
    const core::device::DeviceSession& session = online.Session();
    const std::string model(core::device::Identify(session.Id()).model);
    const int type = static_cast<int>(session.DeviceType());

    Report report;
    report.document = {{"id", session.Id()},
                       {"model", model},
                       {"deviceType", type},
                       {"deviceRevision", session.DeviceRevision()},
                       {"memoryCapacity", session.MemoryCapacity()},
                       {"serial", session.SerialNumber()},
                       {"caption", online.SerialLabel()}};
    report.text = online.SerialLabel() + "\n\n" +
                  AlignedPairs({{"Model", model},
                                {"Identity", std::to_string(session.Id())},
                                {"Revision", std::to_string(session.DeviceRevision())},
                                {"Memory", std::to_string(session.MemoryCapacity()) + " samples"}});
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
