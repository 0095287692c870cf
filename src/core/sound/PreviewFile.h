// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>

#include "base/Result.h"
#include "sound/level/HeardSound.h"

namespace kestrin::core::sound {

/// The WAV copy of a sound that is played to the person: "temp.wav", which every preview writes anew.
class PreviewFile {
 public:
  static constexpr const char* kName = "temp.wav";

  /// Writes the copy of `sound`, as its file holds it or as a board plays it, into the first of the folders that takes
  /// it; missing folders are made. Returns where the copy lies. Fails when the sound is missing or none (NotValid),
  /// when no board can be given it, as LSU_SoundFile::CheckCodable() says it, or when no folder takes the copy.
  static base::Result<std::filesystem::path> Write(const HeardSound& sound,
                                                   std::span<const std::filesystem::path> folders);
  static base::Result<std::filesystem::path> Write(const std::filesystem::path& sound,
                                                   std::span<const std::filesystem::path> folders) {
    return Write(HeardSound{sound}, folders);
  }
};

}  // namespace kestrin::core::sound
