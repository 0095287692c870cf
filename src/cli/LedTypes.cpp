#include "cli/LedTypes.h"

#include <algorithm>
#include <limits>

#include "cli/CommandFailure.h"
#include "led/LedCatalogue.h"
#include "led/PlainNumber.h"

namespace kestrin::cli {

std::vector<led::LED_Driver> ReadLedTypes(const std::filesystem::path& programFolder) {
  led::LedCatalogue catalogue(programFolder);
  std::vector<led::LED_Driver> types;
  if (!catalogue.ReadTypes(types))
    throw CommandFailure(ExitCode::Failed, led::LedCatalogue::kInvalid, catalogue.Problem());
  return types;
}

void LedTypeChoice::Declare(Syntax& syntax) {
  syntax.Text("--type NAME", m_name, "LED type, as \"kestrinctl led types\" lists it", Syntax::Need::Required);
  syntax.Number("--overdrive PERCENT", m_overdrive, 1, std::numeric_limits<std::int32_t>::max(),
                "How hard the LED is driven, 100 = as rated; more than it bears is lowered");
}

void LedTypeChoice::Require() const {
  if (!m_overdrive) throw CommandFailure(ExitCode::WrongUsage, "--overdrive is required, for example --overdrive 100.");
}

std::string LedTypeChoice::Apply(led::LedSetup& setup, const std::filesystem::path& programFolder) const {
  const auto types = ReadLedTypes(programFolder);
  if (std::none_of(types.begin(), types.end(), [&](const led::LED_Driver& type) { return type.LEDName == m_name; }))
    throw CommandFailure(ExitCode::Failed, "There is no LED type \"" + m_name +
                                               "\". \"kestrinctl led types\" lists those that there are.");
  static_cast<void>(setup.SelectLED(m_name, led::LedSetup::kVoltage, *m_overdrive));
  const double overdrive = setup.CurrentDriver().OverDrive;
  if (overdrive == *m_overdrive) return "";
  return "The overdrive was lowered to " + led::PlainNumber(overdrive) + "%, the most that this LED type bears.";
}

}  // namespace kestrin::cli
