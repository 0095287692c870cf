// SPDX-License-Identifier: MIT
#include "core/sound/import/SoundBounds.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrin::core::sound {
namespace {

/// Silence, a sound of that height, silence.
std::vector<double> Padded(std::size_t before, std::size_t sound, std::size_t behind, double height = 0.5,
                           double silence = 0) {
  std::vector<double> samples(before + sound + behind, silence);
  for (std::size_t i = before; i < before + sound; ++i) samples[i] = i % 2 == 0 ? height : -height;
  return samples;
}

Stretch Trimmed(const std::vector<double>& samples) {
  SoundBounds bounds;
  bounds.Add(samples);
  return bounds.WithoutSilence();
}

TEST(SoundBoundsTest, SilenceGoesAndALittleOfItStays) {
  // 240 samples stay before the sound, 960 behind it.
  EXPECT_EQ(Trimmed(Padded(48000, 1000, 24000)), (Stretch{48000 - 240, 49000 + 960}));
}

TEST(SoundBoundsTest, LessThanTenMillisecondsAreNotWorthACut) {
  EXPECT_EQ(Trimmed(Padded(719, 1000, 1439)), (Stretch{0, 3158}));
  EXPECT_EQ(Trimmed(Padded(720, 1000, 1440)), (Stretch{480, 720 + 1000 + 960}));
}

TEST(SoundBoundsTest, WhatIsSilenceHangsOnThePeak) {
  // A thousandth of the peak and less; the steps are less than 1 dB, in favour of the sound.
  for (const double height : {0.9, 0.01, 300.0}) {
    EXPECT_EQ(Trimmed(Padded(5000, 1000, 5000, height, height / 1130)), (Stretch{4760, 6960})) << height;
    EXPECT_EQ(Trimmed(Padded(5000, 1000, 5000, height, -height / 990)), (Stretch{0, 11000})) << height;
  }
}

TEST(SoundBoundsTest, QuietPartsInTheMiddleStay) {
  std::vector<double> samples = Padded(3000, 500, 60000);
  samples[50000] = 0.1;
  EXPECT_EQ(Trimmed(samples), (Stretch{2760, 50961}));
}

TEST(SoundBoundsTest, NothingButSilenceStaysAsItIs) {
  EXPECT_EQ(Trimmed(std::vector<double>(5000, 0.0)), (Stretch{0, 5000}));
  EXPECT_EQ(Trimmed({}), (Stretch{0, 0}));
}

TEST(SoundBoundsTest, BlocksOfAnySizeGiveTheSame) {
  const std::vector<double> samples = Padded(5000, 1000, 5000);
  SoundBounds bounds;
  for (const double sample : samples) bounds.Add({&sample, 1});
  EXPECT_EQ(bounds.WithoutSilence(), Trimmed(samples));
  EXPECT_EQ(bounds.Count(), 11000U);
  EXPECT_EQ(bounds.Peak(), 0.5);
}

}  // namespace
}  // namespace kestrin::core::sound
