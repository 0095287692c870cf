// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <atomic>
#include <cmath>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/sound/import/AudioTools.h"

namespace kestrin::support {

/// Sounds out of memory, at 48,000 samples a second, and a meter that only knows the mean power and the highest sample.
class FakeAudioTools final : public core::sound::AudioTools {
 public:
  struct Sound {
    std::vector<double> frames;
    int channels = 1;
    int bits = 16;
    /// How the file ends.
    core::base::Result<> end = {};
    std::uint64_t mended = 0;
  };

  /// What is read from this path, each time that it is opened; a path that is not there fails.
  std::map<std::filesystem::path, std::function<Sound()>> sounds;
  std::atomic<int> opened = 0;

  void Put(const std::filesystem::path& path, Sound sound) {
    sounds[path] = [sound = std::move(sound)] { return sound; };
  }

  core::base::Result<std::unique_ptr<core::sound::SoundDecoder>> Open(const std::filesystem::path& path) override {
    ++opened;
    const auto found = sounds.find(path);
    if (found == sounds.end()) return core::base::Failure{core::base::FailureKind::NotFound, "There is no such sound."};
    return std::unique_ptr<core::sound::SoundDecoder>(std::make_unique<Decoder>(found->second()));
  }
  std::unique_ptr<core::sound::RateConverter> MakeConverter(int) override { return std::make_unique<Converter>(); }
  std::unique_ptr<core::sound::LoudnessMeter> MakeMeter() override { return std::make_unique<Meter>(); }

 private:
  class Decoder final : public core::sound::SoundDecoder {
   public:
    explicit Decoder(Sound sound) : m_sound(std::move(sound)) {
      m_shape.rate = 48000;
      m_shape.channels = m_sound.channels;
      m_shape.bits = m_sound.bits;
      m_shape.format = "WAV";
    }
    [[nodiscard]] const core::sound::SoundShape& Shape() const override { return m_shape; }
    [[nodiscard]] std::size_t Read(std::span<double> frames) override {
      const std::size_t count = std::min(frames.size(), m_sound.frames.size() - m_place);
      std::copy_n(m_sound.frames.begin() + static_cast<std::ptrdiff_t>(m_place), count, frames.begin());
      m_place += count;
      return count / static_cast<std::size_t>(m_sound.channels);
    }
    [[nodiscard]] core::base::Result<> Ended() const override { return m_sound.end; }
    [[nodiscard]] std::uint64_t Mended() const override { return m_sound.mended; }

   private:
    Sound m_sound;
    core::sound::SoundShape m_shape;
    std::size_t m_place = 0;
  };

  class Converter final : public core::sound::RateConverter {
   public:
    void Convert(std::span<const double> in, std::vector<double>& out) override {
      out.insert(out.end(), in.begin(), in.end());
    }
    void Finish(std::vector<double>&) override {}
  };

  class Meter final : public core::sound::LoudnessMeter {
   public:
    void Add(std::span<const double> samples) override {
      for (const double sample : samples) {
        m_power += sample * sample;
        m_peak = std::max(m_peak, std::fabs(sample));
      }
      m_count += samples.size();
    }
    [[nodiscard]] core::sound::Loudness Finish() override {
      if (m_peak == 0) return {};
      return {10 * std::log10(m_power / static_cast<double>(m_count)), 20 * std::log10(m_peak)};
    }

   private:
    double m_power = 0;
    double m_peak = 0;
    std::size_t m_count = 0;
  };
};

}  // namespace kestrin::support
