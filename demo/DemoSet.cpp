// SPDX-License-Identifier: MIT
#include "demo/DemoSet.h"

#include <span>
#include <system_error>
#include <utility>

#include "core/base/PathText.h"
#include "core/base/WholeFile.h"
#include "core/sound/ConfigurationFile.h"
#include "core/sound/LSU_Configuration.h"
#include "demo/Clashes.h"
#include "demo/Finish.h"
#include "demo/IdleHum.h"
#include "demo/Lockups.h"
#include "demo/PowerSounds.h"
#include "demo/Swings.h"

namespace kestrin::demo {

namespace fs = std::filesystem;
using core::sound::SlotKind;

namespace {

/// A ".lsu" file: a header word, then the samples, little-endian.
std::string FileBytes(std::span<const std::int16_t> samples) {
  std::string bytes(4, '\0');
  bytes.reserve(4 + 2 * samples.size());
  for (const std::int16_t sample : samples) {
    const auto word = static_cast<std::uint16_t>(sample);
    bytes += static_cast<char>(word & 0xFF);
    bytes += static_cast<char>(word >> 8);
  }
  return bytes;
}

using Change = std::function<std::vector<std::int16_t>(const DemoSound&, std::vector<std::int16_t>)>;

/// Writes the sounds, changed, and the configuration file NAME.lscfg.
core::base::Result<> WriteSet(const fs::path& folder, const std::string& name, const Change& change,
                              core::base::Disk& disk) {
  std::error_code error;
  const fs::path home = fs::absolute(folder, error).lexically_normal();
  if (!error) fs::create_directories(home, error);
  if (error)
    return core::base::Failure{core::base::KindOf(error),
                               core::base::TextOf(folder) + ": the folder cannot be made: " + error.message()};

  core::sound::LSU_Configuration configuration;
  for (const DemoSound& demo : DemoSounds()) {
    const fs::path path = home / demo.fileName;
    const std::vector<std::int16_t> samples = change(demo, demo.make());
    if (auto written = core::base::WriteWholeFile(path, FileBytes(samples)); !written) return written;
    if (!configuration.AddFile(path, demo.slot))
      return core::base::Failure{core::base::FailureKind::NotValid,
                                 core::base::TextOf(path) + ": not a usable sound file"};
    configuration.SetVolume(demo.slot, configuration.Count(demo.slot), demo.volume);
  }
  return core::sound::ConfigurationFile::Save(configuration, home / (name + ".lscfg"), disk);
}

}  // namespace

std::vector<DemoSound> DemoSounds() {
  constexpr double kSoft = 0.01;
  constexpr double kAtOnce = 0.001;
  constexpr double kTail = 0.08;
  std::vector<DemoSound> sounds{
      {SlotKind::Boot, "boot.lsu", 70, false, [] { return Finish(BootChime(), kAtOnce, 0.3); }},
      {SlotKind::PwrOn, "power on.lsu", 90, false, [] { return Finish(PowerOn(), kSoft, kTail); }},
      {SlotKind::PwrOff, "power off.lsu", 90, false, [] { return Finish(PowerOff(), kSoft, 0.15); }},
      {SlotKind::Idle, "idle.lsu", 55, true, [] { return FinishLoop(IdleHum()); }}};
  const auto add = [&sounds](SlotKind slot, const char* name, int number, std::int16_t volume, bool loops, auto make) {
    sounds.push_back({slot, name + std::to_string(number) + ".lsu", volume, loops, std::move(make)});
  };
  for (int n = 1; n <= kSwings; ++n) {
    add(SlotKind::Motion, "swing", n, 80, false, [n] { return Finish(Swing(n), kTail, kTail); });
  }
  for (int n = 1; n <= kClashes; ++n) {
    add(SlotKind::Impact, "clash", n, 100, false, [n] { return Finish(Clash(n), kAtOnce, 0.15); });
  }
  for (int n = 1; n <= kLockups; ++n) {
    add(SlotKind::Lockup, "lockup", n, 75, true, [n] { return FinishLoop(Lockup(n)); });
  }
  return sounds;
}

core::base::Result<> WriteDemoSet(const fs::path& folder, core::base::Disk& disk) {
  return WriteSet(
      folder, "demo", [](const DemoSound&, std::vector<std::int16_t> samples) { return samples; }, disk);
}

core::base::Result<> WriteDemoFonts(const fs::path& folder, core::base::Disk& disk) {
  for (const DemoFont& font : kDemoFonts) {
    const auto change = [&](const DemoSound& demo, const std::vector<std::int16_t>& samples) {
      return InVoice(samples, demo.loops, font.voice);
    };
    if (auto written = WriteSet(folder / font.name, font.name, change, disk); !written) return written;
  }
  return {};
}

}  // namespace kestrin::demo
