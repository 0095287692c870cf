// SPDX-License-Identifier: MIT
// Any bytes as an LED catalogue.

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "MemoryFolder.h"
#include "core/led/LevelCounts.h"
#include "core/ledsetup/LedSetup.h"
#include "support/RecordingLedSetupView.h"

namespace {

using kestrin::fuzz::MemoryFolder;
using kestrin::fuzz::Require;
using namespace kestrin::core::led;
using kestrin::core::ledsetup::LedSetup;

/// A type that was accepted keeps to its ranges, and no level leads out of the counts.
void Check(const LED_Driver& type) {
  Require(type.NrOfChannels >= 1 && type.NrOfChannels <= LED_Driver::kChannels);
  Require(type.Period >= 10 && type.Period <= 10000);
  for (int channel = 1; channel <= type.NrOfChannels; ++channel) {
    Require(!ColorWord(type.GetChannelColor(channel)).empty());
    Require(type.GetMaxLum(channel) >= 101 && type.GetMaxLum(channel) <= 50000);
    Require(type.GetMaxDC(channel) >= 2 && type.GetMaxDC(channel) <= 100);
    for (const int level : {-32768, 0, 1, 127, 254, 255, 32767}) {
      const LevelCounts counts = CountsOf(type, channel, level);
      Require(counts.off >= 1 && counts.off <= type.Period + 1);
      Require((counts.on == 0) == (counts.luminance == 0));
      if (level <= 0) Require(counts.off == 1);
      if (level >= 255) Require(counts.off == type.Period + 1);
    }
    const Color color = type.GetChannelColor(channel);
    const std::int32_t luminance = type.ConvertRGBtoLuminance(color, 255, false, false, false);
    Require(luminance <= 50000);
    const bool searched = color == kRed || color == kGreen || color == kBlue;
    if (searched) Require(type.ConvertLuminanceToRGB(color, luminance) <= 255);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const MemoryFolder folder;
  static_cast<void>(folder.Write(LedCatalogue::kFileName, data, size));

  LedCatalogue catalogue(folder.Path());
  const auto types = catalogue.Types();
  const auto valid = static_cast<bool>(types);
  Require(valid == types.Text().empty());
  Require(!valid || !types->empty());

  std::set<std::string> names;
  for (const LedCatalogue::Record& record : catalogue.Records()) {
    if (!record.type) continue;
    Check(*record.type);
    names.insert(record.type->LEDName);
  }
  for (const std::string& name : names) {
    kestrin::support::RecordingLedSetupView view;
    LedSetup setup(
        folder.Path(), [] { return nullptr; }, view);
    const bool selected = setup.SelectLED(name, 6, 32767);
    Require(selected == view.critical.empty());
    Require(selected || !valid);
    if (!selected) continue;
    Require(setup.State().CurrentDriver.LEDName == name);
    Require(view.overdrive >= 100 && view.overdrive <= view.overdriveMaximum);
    setup.EditPulseHigh();
    Require(!view.rows.empty());
  }
  return 0;
}
