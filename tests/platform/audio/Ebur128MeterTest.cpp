// SPDX-License-Identifier: MIT
#include <ebur128.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

#include "platform/audio/SystemAudioTools.h"
#include "support/SoundFiles.h"

namespace kestrin::platform::audio {
namespace {

using core::sound::Loudness;
using support::Tone;

Loudness Measure(const std::vector<double>& samples, std::size_t block = 1000) {
  SystemAudioTools tools;
  const auto meter = tools.MakeMeter();
  for (std::size_t i = 0; i < samples.size(); i += block)
    meter->Add(std::span(samples).subspan(i, std::min(block, samples.size() - i)));
  return meter->Finish();
}

std::vector<double> Sine(double hertz, double peak, std::size_t samples, double phase = 0) {
  std::vector<double> sine(samples);
  for (std::size_t i = 0; i < samples; ++i)
    sine[i] = peak * std::sin(2 * std::numbers::pi * hertz * static_cast<double>(i) / 48000 + phase);
  return sine;
}

/// By the library, with all that it has, and silence behind the sound.
double LibrarysTruePeak(std::vector<double> samples) {
  samples.insert(samples.end(), 4800, 0.0);
  ebur128_state* state = ebur128_init(1, 48000, EBUR128_MODE_TRUE_PEAK);
  EXPECT_EQ(ebur128_add_frames_double(state, samples.data(), samples.size()), EBUR128_SUCCESS);
  double peak = 0;
  EXPECT_EQ(ebur128_true_peak(state, 0, &peak), EBUR128_SUCCESS);
  ebur128_destroy(&state);
  return 20 * std::log10(peak);
}

TEST(Ebur128MeterTest, AToneOutOfOneLoudspeakerIsAsLoudAsTheStandardSays) {
  // A tone of 997 Hz at full scale on both of two channels has 0 LUFS; so it is heard out of one loudspeaker.
  for (const double decibels : {0.0, -6.0, -23.0, -50.0}) {
    const Loudness loudness = Measure(Sine(997, std::pow(10, decibels / 20), 240000));
    EXPECT_NEAR(loudness.lufs.value(), decibels, 0.05);
    EXPECT_NEAR(loudness.truePeak.value(), decibels, 0.02);
  }
}

TEST(Ebur128MeterTest, AShortSoundCountsByItsEffectOnTheEar) {
  // The energy of what there is, spread over 400 ms.
  for (const std::size_t samples : {480U, 2400U, 14400U, 19199U}) {
    const double expected = -6.02 + 10 * std::log10(static_cast<double>(samples) / 19200);
    EXPECT_NEAR(Measure(Sine(997, 0.5, samples)).lufs.value(), expected, 0.3) << samples;
  }
}

TEST(Ebur128MeterTest, TheEndOfASoundCounts) {
  std::vector<double> sound = Sine(997, 0.01, 19200);
  const std::vector<double> loud = Sine(997, 0.5, 4700);
  sound.insert(sound.end(), loud.begin(), loud.end());
  // Of the two blocks of 400 ms only the second is loud enough to count: 4,700 of its samples are at -6.02.
  EXPECT_NEAR(Measure(sound).lufs.value(), -6.02 + 10 * std::log10(4700.0 / 19200), 0.3);
}

TEST(Ebur128MeterTest, SilenceHasNoLoudnessAndNoPeak) {
  for (const std::size_t samples : {0U, 1U, 19200U, 100000U}) {
    const Loudness loudness = Measure(std::vector<double>(samples, 0.0));
    EXPECT_FALSE(loudness.lufs.has_value()) << samples;
    EXPECT_FALSE(loudness.truePeak.has_value()) << samples;
  }
}

TEST(Ebur128MeterTest, OneSampleAtTheVeryEndHasAPeak) {
  std::vector<double> sound(48000, 0.0);
  sound.back() = 0.5;
  EXPECT_NEAR(Measure(sound).truePeak.value(), -6.02, 0.01);
}

TEST(Ebur128MeterTest, PeaksBetweenSamplesAreThoseOfTheLibrary) {
  const std::vector<std::vector<double>> sounds{Sine(12000, 1, 48000, std::numbers::pi / 4), Sine(997, 0.3, 1000),
                                                Sine(15000, 0.9, 30000, 0.3), Sine(6000, 0.5, 77, std::numbers::pi / 8),
                                                Tone(8000, 0.8, 513)};
  for (const std::vector<double>& sound : sounds)
    for (const std::size_t block : {1U, 511U, 512U, 100000U})
      EXPECT_NEAR(Measure(sound, block).truePeak.value(), LibrarysTruePeak(sound), 0.001) << block;
  std::vector<double> noise(20000);
  std::uint32_t state = 1;
  for (double& sample : noise) {
    state = state * 1664525U + 1013904223U;
    sample = (static_cast<double>(state >> 8) - 8388608) / 8388608 * 0.7;
  }
  EXPECT_NEAR(Measure(noise).truePeak.value(), LibrarysTruePeak(noise), 0.001);
}

TEST(Ebur128MeterTest, ATonesPeakIsSeenBetweenItsSamples) {
  // At a quarter of the rate and shifted by half a step, no sample is above 0.707.
  const Loudness loudness = Measure(Sine(12000, 1, 48000, std::numbers::pi / 4));
  EXPECT_GT(loudness.truePeak.value(), -0.3);
}

TEST(Ebur128MeterTest, HowTheSoundIsCutIntoBlocksDoesNotMatter) {
  const std::vector<double> sound = Tone(440, 0.4, 50000);
  const Loudness one = Measure(sound, 1);
  const Loudness all = Measure(sound, 100000);
  EXPECT_EQ(one.truePeak, all.truePeak);
  EXPECT_NEAR(one.lufs.value(), all.lufs.value(), 1e-9);
}

}  // namespace
}  // namespace kestrin::platform::audio
