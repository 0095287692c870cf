// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <memory>

#include "base/Result.h"
#include "sound/import/LoudnessMeter.h"
#include "sound/import/RateConverter.h"
#include "sound/import/SoundDecoder.h"

namespace kestrin::core::sound {

/// The port to the libraries that read, convert and measure sounds. Several threads may use it at once, each what it
/// has made itself.
class AudioTools {
 public:
  virtual ~AudioTools() = default;
  /// Opens a sound file of any kind. Never waits for a pipe, never reads a device. The text of a failure says what is
  /// wrong with the file and what to do, for a format that nobody here reads what to save it as.
  [[nodiscard]] virtual base::Result<std::unique_ptr<SoundDecoder>> Open(const std::filesystem::path& path) = 0;
  /// `rate`: samples a second of what comes in, 1,000 .. 768,000.
  [[nodiscard]] virtual std::unique_ptr<RateConverter> MakeConverter(int rate) = 0;
  [[nodiscard]] virtual std::unique_ptr<LoudnessMeter> MakeMeter() = 0;
};

}  // namespace kestrin::core::sound
