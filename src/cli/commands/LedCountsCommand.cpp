// SPDX-License-Identifier: MIT
#include "cli/Commands.h"
#include "cli/ConsoleLedSetupView.h"
#include "cli/LedReports.h"
#include "cli/LedTypes.h"
#include "cli/ProgramFolder.h"

namespace kestrin::cli {

namespace {

class LedCountsCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "led counts"; }
  [[nodiscard]] std::string Description() const override {
    return "Calculate the driver's on and off counts of levels; no board is needed";
  }

  void Declare(Syntax& syntax) override {
    m_type.Declare(syntax);
    syntax.Numbers("--level N", m_levels, 0, 255, core::led::LED_Driver::kChannels,
                   "Levels of the channels, from the first on");
  }

  [[nodiscard]] Report Run(Context& context) override {
    m_type.Require();
    const std::filesystem::path folder = ProgramFolder(context.options);
    ConsoleLedSetupView view;
    core::ledsetup::LedSetup setup(
        folder, [] { return nullptr; }, view);
    const std::string note = m_type.Apply(setup, folder);
    Report report = ReportOfCounts(setup.State().CurrentDriver, m_levels);
    report.message = note;
    return report;
  }

 private:
  LedTypeChoice m_type;
  std::vector<std::int32_t> m_levels;
};

}  // namespace

std::unique_ptr<Command> MakeLedCountsCommand() { return std::make_unique<LedCountsCommand>(); }

}  // namespace kestrin::cli
