// SPDX-License-Identifier: MIT
#include "platform/audio/SystemAudioTools.h"

#include "platform/audio/Ebur128Meter.h"
#include "platform/audio/SndfileDecoder.h"
#include "platform/audio/SoxrConverter.h"

namespace kestrin::platform::audio {

core::base::Result<std::unique_ptr<core::sound::SoundDecoder>> SystemAudioTools::Open(
    const std::filesystem::path& path) {
  return SndfileDecoder::Open(path);
}

std::unique_ptr<core::sound::RateConverter> SystemAudioTools::MakeConverter(int rate) {
  return std::make_unique<SoxrConverter>(rate);
}

std::unique_ptr<core::sound::LoudnessMeter> SystemAudioTools::MakeMeter() { return std::make_unique<Ebur128Meter>(); }

}  // namespace kestrin::platform::audio
