// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace kestrin::support {

/// The kinds of sound files that tests write, by their endings: "wav", "u8.wav", "s24.wav", "s32.wav", "f32.wav",
/// "f64.wav", "adpcm.wav", "aiff", "flac", "s24.flac", "ogg", "opus", "mp3", "caf", "alac.caf", "au", "w64", "rf64".
[[nodiscard]] std::vector<std::string> SoundKinds();

/// Writes a sound of that kind. `frames` holds one sample for each channel, full scale being 1. Throws when the sound
/// library cannot do it.
std::filesystem::path WriteSound(const std::filesystem::path& path, const std::string& kind,
                                 std::span<const double> frames, int rate = 48000, int channels = 1);

/// A tone of that many samples with a fade of 5 ms at both ends.
[[nodiscard]] std::vector<double> Tone(double hertz, double peak, std::size_t samples, double rate = 48000,
                                       double phase = 0);

}  // namespace kestrin::support
