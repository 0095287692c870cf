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
  if (m_setup.InitLedDrivers()) return;
  if (m_setup.LastFailure() == core::ledsetup::LedSetup::Failure::Board)
    throw CommandFailure(ExitCode::Failed, "The board did not answer.");
  throw CommandFailure(
      ExitCode::Failed, core::led::LedCatalogue::kInvalid,
      m_setup.Problem() +
          "\n\"kestrinctl led types\" checks the file, \"kestrinctl led config\" sets another LED type.");
}

void LedBoard::RequireConfirmed(const std::string& what) const {
  if (m_view.WentOffline())
    throw CommandFailure(ExitCode::Failed, "The board did not confirm " + what + ". Check its cable and try again.");
}

Report LedBoard::Status() const {
  const core::led::LED_Driver& driver = m_setup.CurrentDriver();
  Report report;
  report.document = {
      {"code", driver.LedCode},
      {"name", driver.LEDName},
      {"voltage", driver.Voltage},
      {"overdrive", static_cast<std::int32_t>(driver.OverDrive)},
      {"pulses", Document::array({DocumentOf(m_setup.IdlePulse()), DocumentOf(m_setup.FocPulse())})},
  };
  report.text = AlignedPairs({{"LED type", driver.LEDName + " (code " + std::to_string(driver.LedCode) + ")"},
                              {"voltage", core::base::PlainNumber(driver.Voltage) + " V"},
                              {"overdrive", core::base::PlainNumber(driver.OverDrive) + " %"}}) +
                "\n" + TextOfPulses(m_setup.IdlePulse(), m_setup.FocPulse());
  return report;
}

}  // namespace kestrin::cli
