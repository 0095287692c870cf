// SPDX-License-Identifier: MIT
#include "cli/Commands.h"
#include "cli/ConsoleLedSetupView.h"
#include "cli/LedReports.h"
#include "core/base/PathText.h"
#include "core/ledsetup/LedSetup.h"

namespace kestrin::cli {

namespace {

class LedSettingsCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "led settings"; }
  [[nodiscard]] std::string Description() const override { return "Show what an LED settings file holds"; }

  void Declare(Syntax& syntax) override { syntax.Path("FILE", m_file, "LED settings file", Syntax::Need::Required); }

  [[nodiscard]] Report Run(Context&) override {
    ConsoleLedSetupView view;
    core::ledsetup::LedSetup setup(
        "", [] { return nullptr; }, view);
    static_cast<void>(setup.LoadSettings(m_file));
    const core::led::LED_Pulse& idle = setup.State().IdlePulse;
    const core::led::LED_Pulse& foc = setup.State().FocPulse;
    return {ExitCode::Done, {{"idle", DocumentOf(idle)}, {"foc", DocumentOf(foc)}}, TextOfPulses(idle, foc), ""};
  }

 private:
  std::filesystem::path m_file;
};

}  // namespace

std::unique_ptr<Command> MakeLedSettingsCommand() { return std::make_unique<LedSettingsCommand>(); }

}  // namespace kestrin::cli
