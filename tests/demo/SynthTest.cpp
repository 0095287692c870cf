// SPDX-License-Identifier: MIT
#include "demo/Synth.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

#include "demo/Finish.h"

namespace kestrin::demo {
namespace {

TEST(Synth, NoiseFollowsTheXorshiftRuleAndStaysWithinItsRange) {
  // One step of shifts 13, 17, 5 from 1: 0x2001 -> 0x2001 -> 0x2001 ^ 0x40020 = 0x42021.
  Noise noise(1);
  EXPECT_DOUBLE_EQ(noise.Next(), static_cast<double>(0x42021) / 2147483648.0 - 1.0);
  double sum = 0.0;
  for (int i = 0; i < 100000; ++i) {
    const double value = noise.Next();
    ASSERT_GE(value, -1.0);
    ASSERT_LT(value, 1.0);
    sum += value;
  }
  EXPECT_NEAR(sum / 100000.0, 0.0, 0.01);
}

TEST(Synth, HarmonicSumIsTheSumOfSines) {
  const std::array<double, 4> amplitudes{1.0, -0.5, 0.25, 2.0};
  for (const double phase : {0.0, 0.1, 0.37, 0.5, 0.9}) {
    double expected = 0.0;
    for (std::size_t k = 0; k < amplitudes.size(); ++k) {
      expected += amplitudes[k] * std::sin(2.0 * std::acos(-1.0) * static_cast<double>(k + 1) * phase);
    }
    EXPECT_NEAR(HarmonicSum(phase, amplitudes), expected, 1e-12) << phase;
  }
}

TEST(Synth, AnOscillatorTurnsAsOftenAsItsPitchSays) {
  Oscillator oscillator(0.25);
  EXPECT_DOUBLE_EQ(oscillator.Advance(12000.0), 0.25);
  EXPECT_DOUBLE_EQ(oscillator.Advance(12000.0), 0.5);
  EXPECT_DOUBLE_EQ(oscillator.Advance(12000.0), 0.75);
  EXPECT_DOUBLE_EQ(oscillator.Advance(12000.0), 0.0);
}

TEST(Synth, TheFilterLetsItsBandThroughAndHoldsBackTheRest) {
  const auto levelAt = [](double hz, auto band) {
    StateVariableFilter filter;
    double most = 0.0;
    for (int i = 0; i < 48000; ++i) {
      const double out = band(filter.Process(std::sin(kTurn * hz * i / kSampleRate), 1000.0, 2.0));
      if (i > 24000) most = std::max(most, std::abs(out));
    }
    return most;
  };
  using Bands = StateVariableFilter::Bands;
  const auto low = [](const Bands& bands) { return bands.low; };
  const auto band = [](const Bands& bands) { return bands.band; };
  const auto high = [](const Bands& bands) { return bands.high; };
  EXPECT_NEAR(levelAt(1000.0, band), 1.0, 0.01);
  EXPECT_LT(levelAt(50.0, band), 0.05);
  EXPECT_LT(levelAt(15000.0, band), 0.05);
  EXPECT_NEAR(levelAt(50.0, low), 1.0, 0.01);
  EXPECT_LT(levelAt(15000.0, low), 0.01);
  EXPECT_NEAR(levelAt(15000.0, high), 1.0, 0.01);
  EXPECT_LT(levelAt(50.0, high), 0.01);
}

TEST(Synth, StepsAndDecaysHaveTheirMarks) {
  EXPECT_EQ(SoftStep(1.0, 3.0, 0.5), 0.0);
  EXPECT_EQ(SoftStep(1.0, 3.0, 2.0), 0.5);
  EXPECT_EQ(SoftStep(1.0, 3.0, 9.0), 1.0);
  EXPECT_DOUBLE_EQ(Decay(0.6, 0.2), 0.125);
  EXPECT_EQ(SamplesIn(0.5), 24000U);
}

TEST(Finish, TurnsALoopToItsQuietestPlace) {
  // Mean 0; the pair of neighbours next to zero is 1, -1, so the loop starts with -1.
  const std::vector<std::int16_t> samples = FinishLoop({40.0, 1.0, -1.0, -40.0, -20.0, 20.0});
  // In the 1,023 steps that a board keeps apart.
  const auto sized = [](double value) {
    return static_cast<std::int16_t>(std::lround(std::round(value / 40.0 * 1023.0) * 29204.0 / 1023.0));
  };
  EXPECT_EQ(samples, (std::vector<std::int16_t>{sized(-1), sized(-40), sized(-20), sized(20), sized(40), sized(1)}));
}

}  // namespace
}  // namespace kestrin::demo
