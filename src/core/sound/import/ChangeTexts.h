// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "sound/import/Gain.h"
#include "sound/import/SoundDecoder.h"

namespace kestrin::core::sound {

// What is done to a sound, each in a few words. "" where nothing is.

/// "MP3 unpacked", for a format with losses.
[[nodiscard]] std::string UnpackedText(const SoundShape& shape);
/// "44.1 to 48 kHz".
[[nodiscard]] std::string RateText(int rate);
/// "24 to 16 bit", "float to 16 bit".
[[nodiscard]] std::string DepthText(const SoundShape& shape);
/// "3 dB quieter", "0.4 dB louder", with what was in the way of more.
[[nodiscard]] std::string GainText(const Gain& gain);
/// "0.3 s silence off".
[[nodiscard]] std::string TrimText(std::uint64_t samples);
/// "12 damaged samples silenced".
[[nodiscard]] std::string MendedText(std::uint64_t samples);

}  // namespace kestrin::core::sound
