// SPDX-License-Identifier: MIT
#include "cli/Commands.h"
#include "cli/LedTypes.h"
#include "cli/ProgramFolder.h"
#include "cli/TextTable.h"
#include "core/base/PlainNumber.h"

namespace kestrin::cli {

namespace {

class LedTypesCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "led types"; }
  [[nodiscard]] std::string Description() const override { return "List the LED types of the catalogue"; }

  [[nodiscard]] Report Run(Context& context) override {
    constexpr TextTable::Align kRight = TextTable::Align::Right;
    TextTable table({{"type"},
                     {"code", kRight},
                     {"period", kRight},
                     {"LED", kRight},
                     {"color"},
                     {"maxLum", kRight},
                     {"maxDC [%]", kRight},
                     {"voltage [V]", kRight}});
    Document types = Document::array();
    for (const core::led::LED_Driver& type : ReadLedTypes(ProgramFolder(context.options))) {
      Document channels = Document::array();
      for (int channel = 1; channel <= type.NrOfChannels; ++channel) {
        const std::string color(core::led::ColorWord(type.GetChannelColor(channel)));
        channels.push_back({{"color", color},
                            {"maxLum", type.GetMaxLum(channel)},
                            {"maxDC", type.GetMaxDC(channel)},
                            {"voltage", type.GetChannelVoltage(channel)}});
        const bool first = channel == 1;
        table.Add({first ? type.LEDName : "", first ? std::to_string(type.LedCode) : "",
                   first ? std::to_string(type.Period) : "", std::to_string(channel), color,
                   std::to_string(type.GetMaxLum(channel)), std::to_string(type.GetMaxDC(channel)),
                   core::base::PlainNumber(type.GetChannelVoltage(channel))});
      }
      types.push_back(
          {{"name", type.LEDName}, {"code", type.LedCode}, {"period", type.Period}, {"channels", channels}});
    }
    return {ExitCode::Done, {{"types", types}}, table.Text(), ""};
  }
};

}  // namespace

std::unique_ptr<Command> MakeLedTypesCommand() { return std::make_unique<LedTypesCommand>(); }

}  // namespace kestrin::cli
