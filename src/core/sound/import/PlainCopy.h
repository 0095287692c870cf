// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "base/Result.h"
#include "sound/import/SoundImport.h"

namespace kestrin::core::sound {

/// A sound of any kind as it is, for listening: one channel and 48,000 samples a second, and nothing else is done to
/// it.
class PlainCopy {
 public:
  /// Nobody listens longer to what they are about to import, in seconds.
  static constexpr int kMostSeconds = 600;

  /// Writes it as the new ".lsu" file `copy`, block by block. Fails when there is a file of that name, when the sound
  /// cannot be read to its end, and with Cancelled when `goOn` said false; then no file is left. What is louder than
  /// full scale is cut off there, and so is what comes after kMostSeconds.
  static base::Result<> Write(AudioTools& tools, const std::filesystem::path& sound, const std::filesystem::path& copy,
                              const SoundImport::GoOn& goOn = {});
};

}  // namespace kestrin::core::sound
