// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <numbers>
#include <vector>

#include "platform/audio/SystemAudioTools.h"

namespace kestrin::platform::audio {
namespace {

std::vector<double> Convert(const std::vector<double>& samples, int rate, std::size_t block = 4096) {
  SystemAudioTools tools;
  const auto converter = tools.MakeConverter(rate);
  std::vector<double> out;
  for (std::size_t i = 0; i < samples.size(); i += block)
    converter->Convert(std::span(samples).subspan(i, std::min(block, samples.size() - i)), out);
  converter->Finish(out);
  return out;
}

TEST(SoxrConverterTest, TheResultIsAsLongAsTheSound) {
  for (const int rate : {1000, 8000, 11025, 22050, 32000, 37800, 44100, 48000, 96000, 192000, 768000})
    for (const std::size_t samples : {0U, 1U, 2U, 49U, 147U, 441U, 4410U, 10001U}) {
      const auto expected = static_cast<std::size_t>(std::floor(static_cast<double>(samples) * 48000 / rate + 0.5));
      EXPECT_EQ(Convert(std::vector<double>(samples, 0.25), rate, 1000).size(), expected) << rate << " " << samples;
    }
}

TEST(SoxrConverterTest, BlocksOfAnySizeGiveTheSame) {
  std::vector<double> samples(5000);
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = std::sin(static_cast<double>(i * i) / 9000);
  for (const int rate : {44100, 96000}) EXPECT_EQ(Convert(samples, rate, 7), Convert(samples, rate, 5000)) << rate;
}

TEST(SoxrConverterTest, TheBoardsOwnRateGoesThroughUnchanged) {
  const std::vector<double> samples{0.1, -0.2, 0.3};
  EXPECT_EQ(Convert(samples, 48000), samples);
}

/// Power of the sound against that of what differs from it, in dB, but for both ends, where silence goes over into it.
double SignalToNoise(const std::vector<double>& made, const std::function<double(double)>& soundAt) {
  double signal = 0;
  double noise = 0;
  for (std::size_t i = 4800; i + 4800 < made.size(); ++i) {
    const double exact = soundAt(static_cast<double>(i) / 48000);
    signal += exact * exact;
    noise += (made[i] - exact) * (made[i] - exact);
  }
  return 10 * std::log10(signal / noise);
}

std::vector<double> Sampled(const std::function<double(double)>& soundAt, int rate, double seconds) {
  std::vector<double> samples(static_cast<std::size_t>(rate * seconds));
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = soundAt(static_cast<double>(i) / rate);
  return samples;
}

/// A tone as it was found: its height, and how far all the rest is below it, in dB.
struct FoundTone {
  double peak;
  double signalToNoise;
};

/// Fits a tone of that frequency by least squares; what is left is noise.
FoundTone FitTone(const std::vector<double>& made, double hertz) {
  std::array<double, 5> sums{};  // sin sin, sin cos, cos cos, sound sin, sound cos
  const auto from = static_cast<std::ptrdiff_t>(4800);
  const std::vector<double> middle(made.begin() + from, made.end() - from);
  const auto angle = [hertz](std::size_t i) { return 2 * std::numbers::pi * hertz * static_cast<double>(i) / 48000; };
  for (std::size_t i = 0; i < middle.size(); ++i) {
    const double sine = std::sin(angle(i));
    const double cosine = std::cos(angle(i));
    sums[0] += sine * sine;
    sums[1] += sine * cosine;
    sums[2] += cosine * cosine;
    sums[3] += middle[i] * sine;
    sums[4] += middle[i] * cosine;
  }
  const double determinant = sums[0] * sums[2] - sums[1] * sums[1];
  const double a = (sums[3] * sums[2] - sums[4] * sums[1]) / determinant;
  const double b = (sums[4] * sums[0] - sums[3] * sums[1]) / determinant;
  double signal = 0;
  double noise = 0;
  for (std::size_t i = 0; i < middle.size(); ++i) {
    const double tone = a * std::sin(angle(i)) + b * std::cos(angle(i));
    signal += tone * tone;
    noise += (middle[i] - tone) * (middle[i] - tone);
  }
  return {std::hypot(a, b), 10 * std::log10(signal / noise)};
}

TEST(SoxrConverterTest, TonesUpToTwentyKilohertzComeOutAsTheFormulaSays) {
  for (const int rate : {44100, 96000, 192000})
    for (const double hertz : {20.0, 100.0, 997.0, 5000.0, 12345.0, 18000.0, 19000.0, 20000.0}) {
      const auto tone = [hertz](double time) { return 0.9 * std::sin(2 * std::numbers::pi * hertz * time + 0.3); };
      const FoundTone found = FitTone(Convert(Sampled(tone, rate, 1), rate), hertz);
      EXPECT_GE(found.signalToNoise, 100) << rate << " " << hertz;
      EXPECT_NEAR(20 * std::log10(found.peak / 0.9), 0, 0.01) << rate << " " << hertz;
    }
}

TEST(SoxrConverterTest, ASweepUpToTwentyKilohertzComesOutAsTheFormulaSays) {
  const auto sweep = [](double time) {
    constexpr double kFrom = 20;
    constexpr double kTo = 20000;
    constexpr double kSeconds = 4;
    const double growth = std::log(kTo / kFrom) / kSeconds;
    return 0.9 * std::sin(2 * std::numbers::pi * kFrom * (std::exp(growth * time) - 1) / growth);
  };
  EXPECT_GE(SignalToNoise(Convert(Sampled(sweep, 44100, 4), 44100), sweep), 100);
}

TEST(SoxrConverterTest, WhatIsAboveHearingDoesNotComeBackBelow) {
  const auto tone = [](double time) { return 0.9 * std::sin(2 * std::numbers::pi * 30000 * time); };
  const std::vector<double> made = Convert(Sampled(tone, 96000, 1), 96000);
  double loudest = 0;
  for (std::size_t i = 4800; i + 4800 < made.size(); ++i) loudest = std::max(loudest, std::fabs(made[i]));
  EXPECT_LT(loudest, 1e-5);
}

}  // namespace
}  // namespace kestrin::platform::audio
