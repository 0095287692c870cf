// SPDX-License-Identifier: MIT
#include "cli/LedBoard.h"

#include "cli/CommandFailure.h"
#include "cli/LedReports.h"
#include "cli/ProgramFolder.h"
#include "cli/TextTable.h"
#include "core/base/PlainNumber.h"

namespace kestrin::cli {

LedBoard::LedBoard(Context& context)
    : m_online(context),
      m_setup(
          ProgramFolder(context.options), [this] { return &m_online.Board(); }, m_view) {
  m_online.RequireLedDriver();
}

void LedBoard::Read() {
  const core::base::Result<> read = m_setup.InitLedDrivers();
  if (read) return;
  if (read.Why().kind == core::base::FailureKind::NoAnswer)
    throw CommandFailure(ExitCode::Failed, "The board did not answer.");
  throw CommandFailure(
      ExitCode::Failed, core::led::LedCatalogue::kInvalid,
      read.Text() + "\n\"kestrinctl led types\" checks the file, \"kestrinctl led config\" sets another LED type.");
}

void LedBoard::RequireConfirmed(const std::string& what) const {
  if (m_view.WentOffline())
    throw CommandFailure(ExitCode::Failed, "The board did not confirm " + what + ". Check its cable and try again.");
}

Report LedBoard::Status() const {
  const core::ledsetup::LedSetupState& state = m_setup.State();
  const core::led::LED_Driver& driver = state.CurrentDriver;
  Report report;
  report.document = {
      {"code", driver.LedCode},
      {"name", driver.LEDName},
      {"voltage", driver.Voltage},
      {"overdrive", static_cast<std::int32_t>(driver.OverDrive)},
      {"pulses", Document::array({DocumentOf(state.IdlePulse), DocumentOf(state.FocPulse)})},
  };
  report.text = AlignedPairs({{"LED type", driver.LEDName + " (code " + std::to_string(driver.LedCode) + ")"},
                              {"voltage", core::base::PlainNumber(driver.Voltage) + " V"},
                              {"overdrive", core::base::PlainNumber(driver.OverDrive) + " %"}}) +
                "\n" + TextOfPulses(state.IdlePulse, state.FocPulse);
  return report;
}

}  // namespace kestrin::cli
