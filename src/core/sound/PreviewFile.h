// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>

#include "base/Result.h"

namespace kestrin::core::sound {

/// The WAV copy of a sound that is played to the person: "temp.wav", which every preview writes anew.
class PreviewFile {
 public:
  static constexpr const char* kName = "temp.wav";

  /// Writes the copy of `sound` into the first of the folders that takes it; missing folders are made. Returns where
  /// the copy lies. Fails with NotValid when the sound is missing or none, else when no folder takes the copy.
  static base::Result<std::filesystem::path> Write(const std::filesystem::path& sound,
                                                   std::span<const std::filesystem::path> folders);
};

}  // namespace kestrin::core::sound
