// SPDX-License-Identifier: MIT
#include "core/sound/import/LoopJoin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

namespace kestrin::core::sound {
namespace {

/// The sound as it repeats.
std::vector<double> Joined(const std::vector<double>& sound) {
  const LoopNeed need = NeedOfLoop(sound.size()).value();
  const std::span<const double> all(sound);
  const LoopJoin join = JoinLoop(all.first(need.fade), all.last(need.fade + need.search));
  std::vector<double> result(sound.begin(), sound.end() - static_cast<std::ptrdiff_t>(join.off));
  std::copy(join.beginning.begin(), join.beginning.end(), result.begin());
  return result;
}

/// The largest step from one sample to the next, the one from the end to the beginning included.
double LargestStep(const std::vector<double>& sound) {
  double largest = std::fabs(sound.front() - sound.back());
  for (std::size_t i = 1; i < sound.size(); ++i) largest = std::max(largest, std::fabs(sound[i] - sound[i - 1]));
  return largest;
}

std::vector<double> Hum(double hertz, std::size_t samples) {
  std::vector<double> hum(samples);
  for (std::size_t i = 0; i < samples; ++i)
    hum[i] = 0.5 * std::sin(2 * std::numbers::pi * hertz * static_cast<double>(i) / 48000 + 0.7);
  return hum;
}

TEST(LoopJoinTest, AHumRepeatsWithoutAClick) {
  for (const double hertz : {55.0, 97.3, 440.0})
    for (const std::size_t samples : {48000U, 50111U, 4801U}) {
      const std::vector<double> hum = Hum(hertz, samples);
      const std::vector<double> joined = Joined(hum);
      // A tone of that height has no larger step than this.
      const double steepest = 0.5 * 2 * std::numbers::pi * hertz / 48000;
      EXPECT_LE(LargestStep(joined), 1.1 * steepest) << hertz << " " << samples;
    }
}

TEST(LoopJoinTest, TheEndIsCutWhereTheWavesMeet) {
  // Whatever the length: where both ends are alike the fade keeps the height.
  for (const std::size_t samples : {48000U, 48111U, 48222U, 48333U}) {
    const std::vector<double> joined = Joined(Hum(100, samples));
    // In any stretch of one wave, 480 samples, the wave's top is reached.
    for (std::size_t i = 0; i + 480 < 6000; i += 240) {
      const auto from = joined.begin() + static_cast<std::ptrdiff_t>(i);
      EXPECT_NEAR(*std::max_element(from, from + 480), 0.5, 0.01) << samples << " " << i;
    }
  }
}

TEST(LoopJoinTest, NoiseKeepsItsPowerWithinTheFade) {
  std::vector<double> noise(96000);
  std::uint32_t state = 1;
  for (double& sample : noise) {
    state = state * 1664525U + 1013904223U;
    sample = (static_cast<double>(state >> 8) - 8388608) / 8388608;
  }
  const std::vector<double> joined = Joined(noise);
  for (std::size_t part = 0; part < 4; ++part) {
    double power = 0;
    for (std::size_t i = part * 1200; i < (part + 1) * 1200; ++i) power += joined[i] * joined[i];
    // Even noise of that height has a power of a third.
    EXPECT_NEAR(power / 1200, 1.0 / 3, 0.05) << part;
  }
}

TEST(LoopJoinTest, AllButTheBeginningStaysAsItIs) {
  const std::vector<double> hum = Hum(77, 30000);
  const std::vector<double> joined = Joined(hum);
  EXPECT_GE(joined.size(), 30000U - 4800 - 1200);
  EXPECT_LE(joined.size(), 30000U - 4800);
  EXPECT_TRUE(std::equal(joined.begin() + 4800, joined.end(), hum.begin() + 4800));
}

TEST(LoopJoinTest, WhatIsTooShortIsNotJoined) {
  EXPECT_FALSE(NeedOfLoop(0).has_value());
  EXPECT_FALSE(NeedOfLoop(959).has_value());
  ASSERT_TRUE(NeedOfLoop(960).has_value());
  EXPECT_EQ(NeedOfLoop(960)->fade, 240U);
  EXPECT_EQ(NeedOfLoop(960)->search, 120U);
  EXPECT_EQ(NeedOfLoop(1'000'000)->fade, 4800U);
  EXPECT_EQ(NeedOfLoop(1'000'000)->search, 1200U);
}

TEST(LoopJoinTest, SilenceAtOneEndIsNoTrouble) {
  std::vector<double> sound = Hum(100, 20000);
  std::fill(sound.end() - 7000, sound.end(), 0.0);
  for (const double sample : Joined(sound)) ASSERT_TRUE(std::isfinite(sample));
}

}  // namespace
}  // namespace kestrin::core::sound
