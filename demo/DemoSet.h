// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/base/Disk.h"
#include "core/base/Result.h"
#include "core/sound/SlotKind.h"
#include "demo/Voice.h"

namespace kestrin::demo {

/// One sound of the demo set.
struct DemoSound {
  core::sound::SlotKind slot;
  std::string fileName;
  /// Playback volume in percent. The files are all equally loud at their peak; this sets them in relation.
  std::int16_t volume;
  /// True: its end meets its start.
  bool loops;
  /// Synthesises the samples; the same ones every time.
  std::function<std::vector<std::int16_t>()> make;
};

/// All sounds of the set: every slot is filled, lists in the order of their positions.
[[nodiscard]] std::vector<DemoSound> DemoSounds();

/// Another set, made of the same sounds in another voice.
struct DemoFont {
  const char* name;
  Voice voice;
};

/// The sets that the demo's update server offers.
inline constexpr DemoFont kDemoFonts[]{{"Deep Forge", {0.75, 0.6}}, {"Quick Silver", {1.25, 0.0}}};

/// Writes all sounds and "demo.lscfg", which names them by their absolute paths, into `folder`, made when absent.
/// The text of a failure names the file and says what is wrong.
core::base::Result<> WriteDemoSet(const std::filesystem::path& folder, core::base::Disk& disk);

/// Writes a folder for each of kDemoFonts into `folder`, with its sounds and "NAME.lscfg". Fails as above.
core::base::Result<> WriteDemoFonts(const std::filesystem::path& folder, core::base::Disk& disk);

}  // namespace kestrin::demo
