// SPDX-License-Identifier: MIT
#include "core/sound/import/Dither.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace kestrin::core::sound {
namespace {

std::vector<std::int16_t> Dithered(const std::vector<double>& samples, double factor = 1, bool isExact = false,
                                   std::size_t block = 100000) {
  Dither dither(factor, isExact);
  std::vector<std::int16_t> out;
  for (std::size_t i = 0; i < samples.size(); i += block)
    dither.Add(std::span(samples).subspan(i, std::min(block, samples.size() - i)), out);
  dither.Finish(out);
  return out;
}

TEST(DitherTest, WholeNumbersOf16BitsStayAsTheyAre) {
  std::vector<double> samples;
  std::vector<std::int16_t> expected;
  for (int sample = -32768; sample <= 32767; sample += 5) {
    samples.push_back(sample / 32768.0);
    expected.push_back(static_cast<std::int16_t>(sample));
  }
  EXPECT_EQ(Dithered(samples, 1, true), expected);
}

TEST(DitherTest, NothingWrapsAboveFullScale) {
  const std::vector<std::int16_t> out = Dithered({1.0, 5.0, -1.0, -5.0, 1e30, -1e30});
  for (const std::size_t i : {0U, 1U, 4U}) EXPECT_GE(out[i], 32766) << i;
  for (const std::size_t i : {2U, 3U, 5U}) EXPECT_LE(out[i], -32767) << i;
}

TEST(DitherTest, TheMeanIsThatOfTheSound) {
  // A value between two steps is told by how often each is taken; rounding alone would only know one of them.
  for (const double value : {100.25, -7.4, 0.3, -0.5}) {
    const std::vector<std::int16_t> out = Dithered(std::vector<double>(200000, value / 32768));
    double sum = 0;
    double squares = 0;
    for (const std::int16_t sample : out) {
      sum += sample;
      squares += (sample - value) * (sample - value);
    }
    EXPECT_NEAR(sum / 200000, value, 0.01) << value;
    // Rounding has a power of 1/12, triangular noise of +-1 twice as much.
    EXPECT_NEAR(squares / 200000, 0.25, 0.01) << value;
  }
}

TEST(DitherTest, AQuietToneKeepsItsHeightAndGetsNoOthers) {
  // 1 kHz at 0.6 of a step: rounding alone would make a square wave of it.
  std::vector<double> tone(480000);
  for (std::size_t i = 0; i < tone.size(); ++i)
    tone[i] = 0.6 / 32768 * std::sin(2 * std::numbers::pi * static_cast<double>(i) / 48);
  const std::vector<std::int16_t> out = Dithered(tone);
  const auto heightAt = [&](double hertz) {
    double sine = 0;
    double cosine = 0;
    for (std::size_t i = 0; i < out.size(); ++i) {
      const double angle = 2 * std::numbers::pi * hertz * static_cast<double>(i) / 48000;
      sine += out[i] * std::sin(angle);
      cosine += out[i] * std::cos(angle);
    }
    return 2 * std::hypot(sine, cosine) / static_cast<double>(out.size());
  };
  EXPECT_NEAR(heightAt(1000), 0.6, 0.01);
  EXPECT_LT(heightAt(3000), 0.01);
  EXPECT_LT(heightAt(5000), 0.01);
}

TEST(DitherTest, StretchesOfSilenceStaySilent) {
  std::vector<double> samples(1000, 0.1);
  samples.insert(samples.end(), 32, 0.0);
  samples.insert(samples.end(), 100, 0.1);
  samples.insert(samples.end(), 5000, 1e-9);
  samples.insert(samples.end(), 100, 0.1);
  for (const std::size_t block : {1U, 7U, 100000U}) {
    const std::vector<std::int16_t> out = Dithered(samples, 1, false, block);
    ASSERT_EQ(out.size(), samples.size());
    EXPECT_EQ(std::count(out.begin() + 1000, out.begin() + 1032, 0), 32) << block;
    EXPECT_EQ(std::count(out.begin() + 1132, out.begin() + 6132, 0), 5000) << block;
  }
}

TEST(DitherTest, AFewZerosAreNoSilence) {
  std::vector<double> samples;
  for (int i = 0; i < 1000; ++i) {
    samples.insert(samples.end(), 31, 0.0);
    samples.push_back(0.1);
  }
  const std::vector<std::int16_t> out = Dithered(samples);
  ASSERT_EQ(out.size(), samples.size());
  EXPECT_LT(std::count(out.begin(), out.end(), 0), 28000);
}

TEST(DitherTest, TheSameSoundGivesTheSameSamples) {
  std::vector<double> samples(5000);
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = std::sin(static_cast<double>(i)) / 3;
  EXPECT_EQ(Dithered(samples, 0.7), Dithered(samples, 0.7, false, 13));
}

}  // namespace
}  // namespace kestrin::core::sound
