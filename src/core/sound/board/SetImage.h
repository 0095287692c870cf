// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "sound/LSU_Configuration.h"
#include "sound/board/FlashSound.h"

namespace kestrin::core::sound {

/// What a set looks like in a board's flash.
struct SetImage {
  /// The set's file.
  std::filesystem::path path;
  std::vector<std::uint8_t> table;
  std::vector<FlashSound> sounds;

  /// Of a set that MakeMemoryMap() has laid out.
  [[nodiscard]] static SetImage Of(LSU_Configuration& configuration, const std::filesystem::path& path);
};

}  // namespace kestrin::core::sound
