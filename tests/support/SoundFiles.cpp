// SPDX-License-Identifier: MIT
#include "support/SoundFiles.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <stdexcept>

namespace kestrin::support {

namespace {

const std::map<std::string, int>& Kinds() {
  static const std::map<std::string, int> kinds{
      {"wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16},          {"u8.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_U8},
      {"s24.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24},      {"s32.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_32},
      {"f32.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT},       {"f64.wav", SF_FORMAT_WAV | SF_FORMAT_DOUBLE},
      {"adpcm.wav", SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM}, {"aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16},
      {"flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16},        {"s24.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24},
      {"ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS},          {"opus", SF_FORMAT_OGG | SF_FORMAT_OPUS},
      {"mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III}, {"caf", SF_FORMAT_CAF | SF_FORMAT_PCM_16},
      {"alac.caf", SF_FORMAT_CAF | SF_FORMAT_ALAC_16},    {"au", SF_FORMAT_AU | SF_FORMAT_PCM_16},
      {"w64", SF_FORMAT_W64 | SF_FORMAT_PCM_16},          {"rf64", SF_FORMAT_RF64 | SF_FORMAT_PCM_16}};
  return kinds;
}

}  // namespace

std::vector<std::string> SoundKinds() {
  std::vector<std::string> names;
  for (const auto& kind : Kinds()) names.push_back(kind.first);
  return names;
}

std::filesystem::path WriteSound(const std::filesystem::path& path, const std::string& kind,
                                 std::span<const double> frames, int rate, int channels) {
  SF_INFO info{};
  info.samplerate = rate;
  info.channels = channels;
  info.format = Kinds().at(kind);
  SNDFILE* const file = sf_open(path.string().c_str(), SFM_WRITE, &info);
  if (file == nullptr) throw std::runtime_error("the test cannot write " + path.string());
  // Without it whole numbers would wrap above full scale.
  (void)sf_command(file, SFC_SET_CLIPPING, nullptr, SF_TRUE);
  const auto count = static_cast<sf_count_t>(frames.size()) / channels;
  sf_count_t written = 0;
  // The coder of Ogg needs more memory than there is for a long sound in one go.
  for (sf_count_t step = 0; written < count; written += step) {
    step = std::min<sf_count_t>(4096, count - written);
    if (sf_writef_double(file, frames.data() + written * channels, step) != step) break;
  }
  if (sf_close(file) != 0 || written != count) throw std::runtime_error("the test cannot fill " + path.string());
  return path;
}

std::vector<double> Tone(double hertz, double peak, std::size_t samples, double rate, double phase) {
  std::vector<double> tone(samples);
  const double fade = 0.005 * rate;
  for (std::size_t i = 0; i < samples; ++i) {
    const auto time = static_cast<double>(i);
    const double nearest = std::min(time, static_cast<double>(samples - 1 - i));
    tone[i] = peak * std::min(1.0, nearest / fade) * std::sin(2 * std::numbers::pi * hertz * time / rate + phase);
  }
  return tone;
}

}  // namespace kestrin::support
