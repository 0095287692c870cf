// SPDX-License-Identifier: MIT
#pragma once

#include "core/sound/import/AudioTools.h"

namespace kestrin::platform::audio {

/// The audio libraries: libsndfile reads, libsoxr converts, libebur128 measures.
class SystemAudioTools final : public core::sound::AudioTools {
 public:
  [[nodiscard]] core::base::Result<std::unique_ptr<core::sound::SoundDecoder>> Open(
      const std::filesystem::path& path) override;
  [[nodiscard]] std::unique_ptr<core::sound::RateConverter> MakeConverter(int rate) override;
  [[nodiscard]] std::unique_ptr<core::sound::LoudnessMeter> MakeMeter() override;
};

}  // namespace kestrin::platform::audio
