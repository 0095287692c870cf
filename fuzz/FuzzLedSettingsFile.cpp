// SPDX-License-Identifier: MIT
// Any bytes as a ".ldset" file.

#include <cstddef>
#include <cstdint>

#include "MemoryFolder.h"
#include "core/led/LedSettingsFile.h"
#include "core/ledsetup/LedSetup.h"
#include "support/RecordingDisk.h"
#include "support/RecordingLedSetupView.h"

namespace {

using kestrin::fuzz::MemoryFolder;
using kestrin::fuzz::Require;
using namespace kestrin::core::led;
using kestrin::core::ledsetup::LedSetup;

/// Whether both pulses are the same as far as files keep them.
bool AreEqual(const LED_Pulse& a, const LED_Pulse& b) {
  for (int channel = 1; channel <= LED_Pulse::kChannels; ++channel)
    if (a.GetLow(channel) != b.GetLow(channel) || a.GetHigh(channel) != b.GetHigh(channel)) return false;
  return a.Ton == b.Ton && a.Toff == b.Toff && a.Trise == b.Trise && a.Tfall == b.Tfall && a.NRep == b.NRep;
}

struct BothPulses {
  LED_Pulse idle;
  LED_Pulse foc;
};

bool Read(const std::filesystem::path& path, BothPulses& pulses) {
  LedSettingsFile file;
  auto valid = file.Open(path);
  if (valid) valid = file.ReadIdle(pulses.idle);
  if (valid) valid = file.ReadFoc(pulses.foc);
  Require(static_cast<bool>(valid) == valid.Text().empty());
  return static_cast<bool>(valid);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const MemoryFolder folder;
  const auto path = folder.Write("input.ldset", data, size);
  const auto saved = folder.Path() / "saved.ldset";
  BothPulses pulses;
  const bool valid = Read(path, pulses);
  if (valid) {
    // What was loaded can be saved, and loads back as the same.
    Require(static_cast<bool>(LedSettingsFile::Save(saved, pulses.idle, pulses.foc, kestrin::support::AnyDisk())));
    BothPulses again;
    Require(Read(saved, again));
    Require(AreEqual(pulses.idle, again.idle) && AreEqual(pulses.foc, again.foc));
  }

  // The panel takes the same files, and what it makes of any of them is a file again.
  static const char kCatalogue[] =
      "KestrinLEDConfigurator#2\nLamp@1#1#1000+Col=whiteML50000MDC80VL3Coef0_0_1_0;0_0_0.0016_0;\n";
  static_cast<void>(
      folder.Write(LedCatalogue::kFileName, reinterpret_cast<const std::uint8_t*>(kCatalogue), sizeof kCatalogue - 1));
  kestrin::support::RecordingLedSetupView view;
  LedSetup setup(
      folder.Path(), [] { return nullptr; }, view);
  Require(setup.SelectLED("Lamp", 6, 100));
  Require(setup.LoadSettings(path) == valid);
  Require(valid == view.information.empty());
  Require(setup.SaveSettings(saved, kestrin::support::AnyDisk()));
  Require(Read(saved, pulses));
  for (const TimeBox box : kTimeBoxes) setup.TimeBoxLeft(box);
  setup.RepeatBoxLeft();
  Require(setup.SaveSettings(saved, kestrin::support::AnyDisk()));
  Require(Read(saved, pulses));
  Require(pulses.idle.Ton >= 0 && pulses.idle.Ton <= 10000000 && pulses.idle.Trise <= 10000);
  Require(pulses.foc.NRep >= 1 && pulses.foc.NRep <= kMostRepetitions);
  return 0;
}
