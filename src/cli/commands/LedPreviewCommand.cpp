// SPDX-License-Identifier: MIT
#include "cli/Commands.h"
#include "cli/LedBoard.h"
#include "cli/LedReports.h"

namespace kestrin::cli {

namespace {

class LedPreviewCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "led preview"; }
  [[nodiscard]] std::string Description() const override {
    return "Show levels on the blade; the pulses stay as they are";
  }

  void Declare(Syntax& syntax) override {
    syntax.Numbers("--level N", m_levels, 0, 255, core::led::LED_Driver::kChannels,
                   "Levels of the channels, from the first on; the others go dark");
  }

  [[nodiscard]] Report Run(Context& context) override {
    LedBoard board(context);
    board.Read();
    Report report = ReportOfCounts(board.Setup().State().CurrentDriver, m_levels);
    for (std::size_t i = 0; i < m_levels.size(); ++i) board.Setup().LevelMoved(static_cast<int>(i) + 1, m_levels[i]);
    board.Setup().PickColorApply();
    board.RequireConfirmed("the levels");
    report.text = "The blade shows these levels.\n\n" + report.text;
    return report;
  }

 private:
  std::vector<std::int32_t> m_levels;
};

}  // namespace

std::unique_ptr<Command> MakeLedPreviewCommand() { return std::make_unique<LedPreviewCommand>(); }

}  // namespace kestrin::cli
