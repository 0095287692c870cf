// SPDX-License-Identifier: MIT
#include "cli/LedTypes.h"

#include <algorithm>
#include <limits>

#include "cli/CommandFailure.h"
#include "core/base/PlainNumber.h"
#include "core/led/LedCatalogue.h"

namespace kestrin::cli {

std::vector<core::led::LED_Driver> ReadLedTypes(const std::filesystem::path& programFolder) {
  core::led::LedCatalogue catalogue(programFolder);
  core::base::Result<std::vector<core::led::LED_Driver>> types = catalogue.Types();
  if (!types) throw CommandFailure(ExitCode::Failed, core::led::LedCatalogue::kInvalid, types.Text());
  return *std::move(types);
}

void LedTypeChoice::Declare(Syntax& syntax) {
  syntax.Text("--type NAME", m_name, "LED type, as \"kestrinctl led types\" lists it", Syntax::Need::Required);
  syntax.Number("--overdrive PERCENT", m_overdrive, 1, std::numeric_limits<std::int32_t>::max(),
                "How hard the LED is driven, 100 = as rated; more than it bears is lowered");
}

void LedTypeChoice::Require() const {
  if (!m_overdrive) throw CommandFailure(ExitCode::WrongUsage, "--overdrive is required, for example --overdrive 100.");
}

std::string LedTypeChoice::Apply(core::ledsetup::LedSetup& setup, const std::filesystem::path& programFolder) const {
  const auto types = ReadLedTypes(programFolder);
  if (std::none_of(types.begin(), types.end(),
                   [&](const core::led::LED_Driver& type) { return type.LEDName == m_name; }))
    throw CommandFailure(ExitCode::Failed, "There is no LED type \"" + m_name +
                                               "\". \"kestrinctl led types\" lists those that there are.");
  static_cast<void>(setup.SelectLED(m_name, core::ledsetup::LedSetup::kVoltage, *m_overdrive));
  const double overdrive = setup.State().CurrentDriver.OverDrive;
  if (overdrive == *m_overdrive) return "";
  return "The overdrive was lowered to " + core::base::PlainNumber(overdrive) + "%, the most that this LED type bears.";
}

}  // namespace kestrin::cli
