// SPDX-License-Identifier: MIT
#include "core/sound/SampleCoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <random>
#include <vector>

#include "support/ReferenceCoder.h"

namespace kestrin::core::sound {
namespace {

using Instructions = SampleCoder::Instructions;
using Samples = std::vector<std::int16_t>;
using Stream = std::vector<std::uint8_t>;

Stream Coded(const Samples& samples, int peak, int volume, Instructions instructions) {
  Stream stream(samples.size() / 2 * 3, 0xEE);
  SampleCoder(peak, static_cast<std::int16_t>(volume), instructions).Code(samples, stream);
  return stream;
}

/// The reference codes whole files: it gets a first sample, and gives three bytes, that do not count here.
Stream Expected(const Samples& samples, int peak, int volume) {
  Samples file{0};
  file.insert(file.end(), samples.begin(), samples.end());
  const Stream stream = support::ReferenceStream(file, peak, volume);
  return {stream.begin() + 3, stream.end()};
}

/// Every 16-bit value that fits at that peak and volume, in an order in which each stands once first and once second.
Samples EveryValue(int peak, int volume) {
  const SampleCoder coder(peak, static_cast<std::int16_t>(volume));
  Samples values;
  for (int value = -32768; value <= 32767; ++value)
    if (coder.CanCode(std::abs(value))) values.push_back(static_cast<std::int16_t>(value));
  const std::size_t count = values.size();
  values.reserve(2 * count + 2);
  if (count % 2 == 0) values.push_back(0);
  for (std::size_t i = 0; i < count; ++i) values.push_back(values[i]);
  if (values.size() % 2 != 0) values.push_back(0);
  return values;
}

class SampleCoderWith : public testing::TestWithParam<Instructions> {};
INSTANTIATE_TEST_SUITE_P(Instructions, SampleCoderWith, testing::Values(Instructions::Best, Instructions::Baseline),
                         [](const auto& test) { return test.param == Instructions::Best ? "Best" : "Baseline"; });

TEST_P(SampleCoderWith, EveryValueIsCodedAsDescribed) {
  // Peaks and volumes at which products are whole, halves, quarters and neither; 999 makes the factor exactly 1.
  constexpr std::array kPeaks{1,    2,    3,    37,   111,   333,   998,   999,   1000,
                              1998, 3996, 7992, 9990, 16384, 20000, 31968, 32767, 32768};
  constexpr std::array kVolumes{-102, -50, -1, 0, 1, 25, 50, 75, 99, 100, 101, 102};
  for (const int peak : kPeaks)
    for (const int volume : kVolumes) {
      const Samples samples = EveryValue(peak, volume);
      ASSERT_EQ(Coded(samples, peak, volume, GetParam()), Expected(samples, peak, volume)) << peak << " " << volume;
    }
}

TEST_P(SampleCoderWith, RandomPeaksAndVolumesAreCodedAsDescribed) {
  std::mt19937 random(20240229);
  for (int run = 0; run < 300; ++run) {
    const int peak = std::uniform_int_distribution(1, 32768)(random);
    const int volume = std::uniform_int_distribution(-103, 103)(random);
    const SampleCoder coder(peak, static_cast<std::int16_t>(volume));
    std::uniform_int_distribution value(-std::min(peak, 32768), std::min(peak, 32767));
    Samples samples(2000);
    for (std::int16_t& sample : samples) {
      sample = static_cast<std::int16_t>(value(random));
      if (!coder.CanCode(std::abs(int{sample}))) sample = 0;
    }
    ASSERT_EQ(Coded(samples, peak, volume, GetParam()), Expected(samples, peak, volume)) << peak << " " << volume;
  }
}

TEST_P(SampleCoderWith, HalvesAreRoundedToTheEvenNeighbour) {
  struct Row {
    std::int16_t first;
    std::int16_t second;
    Stream bytes;
  };
  // Peak 1998 at 100 %: a sample codes to exactly half of it.
  const Row kRows[] = {
      // 3.5 rounds to 4: byte 0 is 1, and 3.5 is 2 quarters away from 4. 0.5 rounds to 0, which is not below 0.
      {7, 1, {1, 2, 0}},
      {-7, -1, {1, 128 + 2, 0}},
      // 4.5 rounds to 4, 2 quarters away from it; 1.5 rounds to 2.
      {9, 3, {1, 2 + 2, 0}},
      {-9, -3, {1, 128 + 2 + 64 + 2, 0}},
      // 2.5 and 2.5: byte 0 is 0, so all ten quarters stand in byte 1; 2.5 rounds to 2.
      {5, 5, {0, 10 + 2, 0}},
      // 7.5 rounds to 8, half a unit below it: two quarters; 3.5 rounds to 4, which has no low bits.
      {15, 7, {2, 2, 1}},
      // 0.5 rounds to 0 and is below 0 all the same as a first sample.
      {-1, 0, {0, 128 + 2, 0}},
  };
  for (const Row& row : kRows)
    EXPECT_EQ(Coded({row.first, row.second}, 1998, 100, GetParam()), row.bytes) << row.first << " " << row.second;
}

TEST_P(SampleCoderWith, QuartersThemselvesAreRoundedToTheEvenNeighbour) {
  // Peak 7992 at 100 %: a sample codes to exactly an eighth of it, so an odd sample is half a quarter away from a whole
  // one.
  struct Row {
    std::int16_t first;
    int byte0;
    int quarters;
  };
  constexpr Row kRows[] = {{1, 0, 0},   {3, 0, 2},  {5, 0, 2},  {7, 0, 4},  {9, 0, 4},  {11, 0, 6},
                           {27, 0, 14}, {28, 1, 2}, {29, 1, 2}, {31, 1, 0}, {33, 1, 0}, {35, 1, 2}};
  for (const Row& row : kRows) {
    EXPECT_EQ(Coded({row.first, 0}, 7992, 100, GetParam()),
              (Stream{static_cast<std::uint8_t>(row.byte0), static_cast<std::uint8_t>(row.quarters), 0}))
        << row.first;
  }
}

TEST_P(SampleCoderWith, QuartersMayRunOverIntoTheBitsBetweenMagnitudesAndSigns) {
  // 27 eighths are 13.5 quarters, rounded to 14; the second magnitude 3 adds to them: 17 = 0b1'0001.
  EXPECT_EQ(Coded({27, 24}, 7992, 100, GetParam()), (Stream{0, 17, 0}));
}

TEST_P(SampleCoderWith, SignsFollowTheSamplesAndTurnWithANegativeVolume) {
  struct Row {
    std::int16_t first;
    std::int16_t second;
    int volume;
    int signs;
  };
  constexpr Row kRows[] = {{400, 400, 100, 0},    {-400, 400, 100, 128}, {400, -400, 100, 64},   {-400, -400, 100, 192},
                           {400, 400, -100, 192}, {-400, 400, -100, 64}, {400, -400, -100, 128}, {-400, -400, -100, 0},
                           {0, 0, 100, 0},        {0, 0, -100, 0},       {-400, -400, 0, 0},     {400, 400, 0, 0}};
  for (const Row& row : kRows)
    EXPECT_EQ(Coded({row.first, row.second}, 999, row.volume, GetParam())[1], row.signs)
        << row.first << " " << row.second << " " << row.volume;
}

TEST_P(SampleCoderWith, AnyCountOfPairsIsCodedAndNothingBehindThem) {
  std::mt19937 random(7);
  std::uniform_int_distribution value(-20000, 20000);
  for (std::size_t pairs = 0; pairs <= 300; ++pairs) {
    Samples samples(2 * pairs);
    for (std::int16_t& sample : samples) sample = static_cast<std::int16_t>(value(random));
    Stream stream(3 * pairs + 16, 0xEE);
    SampleCoder(20000, 100, GetParam()).Code(samples, std::span(stream).first(3 * pairs));
    Stream expected = Expected(samples, 20000, 100);
    expected.resize(3 * pairs + 16, 0xEE);
    ASSERT_EQ(stream, expected) << pairs;
  }
}

TEST_P(SampleCoderWith, DecodedValuesLieWithinTheFormatsQuantisation) {
  const int peak = 32768;
  for (const int volume : {100, 50, -80}) {
    const Samples samples = EveryValue(peak, volume);
    const std::vector<int> values = support::DecodeStream(Coded(samples, peak, volume, GetParam()));
    const double factor = 999.0 / peak * volume / 100;
    for (std::size_t i = 0; i < samples.size(); ++i) {
      // The quarters of the first blur the low two bits of the second, by 3 at most; the first is off by the carry of
      // the second's bits and its own rounding.
      const double tolerance = i % 2 == 0 ? 1.5 : 3.5;
      ASSERT_NEAR(values[i], samples[i] * factor, tolerance) << samples[i] << " at " << volume;
    }
  }
}

TEST(SampleCoder, MagnitudesUpTo1023FitAndRoundingDecides) {
  struct Row {
    int peak;
    int volume;
    int magnitude;
    bool fits;
  };
  constexpr Row kRows[] = {{999, 100, 999, true},      {999, 100, 1023, true},     {999, 100, 1024, false},
                           {1998, 100, 2046, true},    // 1023
                           {1998, 100, 2047, false},   // 1023.5 rounds to the even 1024
                           {3996, 100, 4093, true},    // 1023.25
                           {32768, 102, 32768, true},  // 1018.98
                           {32768, 103, 32768, false}, {32768, -102, 32768, true}, {32768, -103, 32768, false},
                           {1, 32767, 1, false},       {1, 32767, 0, true},        {1, 0, 32768, true}};
  for (const Row& row : kRows)
    EXPECT_EQ(SampleCoder(row.peak, static_cast<std::int16_t>(row.volume)).CanCode(row.magnitude), row.fits)
        << row.peak << " " << row.volume << " " << row.magnitude;
}

TEST(SampleCoder, WithoutAPeakEverySampleIsSilent) {
  const SampleCoder coder(0, 100);
  EXPECT_TRUE(coder.CanCode(32768));
  Stream stream(3, 0xEE);
  coder.Code(Samples{-32768, 32767}, stream);
  EXPECT_EQ(stream, (Stream{0, 0, 0}));
}

TEST(LargestMagnitude, IsTheAbsoluteValueOfTheLoudestSample) {
  EXPECT_EQ(LargestMagnitude({}), 0);
  EXPECT_EQ(LargestMagnitude(Samples{0, 0}), 0);
  EXPECT_EQ(LargestMagnitude(Samples{3, -7, 5}), 7);
  EXPECT_EQ(LargestMagnitude(Samples{3, -7, 8}), 8);
  EXPECT_EQ(LargestMagnitude(Samples{32767, -32768}), 32768);
  // Wherever it stands: whole vectors and what is left over.
  for (std::size_t at = 0; at < 100; ++at) {
    Samples samples(100, 1);
    samples[at] = -500;
    EXPECT_EQ(LargestMagnitude(samples), 500) << at;
  }
}

}  // namespace
}  // namespace kestrin::core::sound
