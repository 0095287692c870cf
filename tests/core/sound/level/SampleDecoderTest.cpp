// SPDX-License-Identifier: MIT
#include "core/sound/level/SampleDecoder.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <vector>

#include "core/sound/SampleCoder.h"
#include "support/ReferenceCoder.h"

namespace kestrin::core::sound {
namespace {

using Samples = std::vector<std::int16_t>;
using Stream = std::vector<std::uint8_t>;

Samples Decoded(const Stream& stream) {
  Samples samples(stream.size() / 3 * 2, 99);
  SampleDecoder::Decode(stream, samples);
  return samples;
}

TEST(SampleDecoder, ReadsTheBytesOfTheFormat) {
  struct Row {
    Stream bytes;
    Samples samples;
  };
  // A step of the ten bits is 32767 / 1023 = 32.0303.
  const Row kRows[] = {
      {{}, {}},
      {{0, 0, 0}, {0, 0}},
      {{0, 0b0000'0101, 0}, {32, 32}},              // 1 and 1
      {{0, 0b1100'0101, 0}, {-32, -32}},            // the same below 0
      {{0, 0b1100'0000, 0}, {0, 0}},                // signs of nothing
      {{0, 0b0000'1011, 0}, {64, 96}},              // 2 and 3: 64.06 and 96.09
      {{1, 0, 0}, {128, 0}},                        // 4: 128.12
      {{0, 0, 1}, {0, 128}},                        //
      {{0, 0b0001'0001, 0}, {128, 32}},             // quarters that ran over: four for the first, 1 for the second
      {{0, 0b0011'1111, 0}, {480, 96}},             // 15, which no coder makes: 480.45
      {{249, 0b0000'1111, 249}, {31998, 31998}},    // 999 and 999: 31998.27
      {{249, 0b1000'1111, 249}, {-31998, 31998}},   //
      {{249, 0b0100'1111, 249}, {31998, -31998}},   //
      {{255, 0b1100'1111, 255}, {-32767, -32767}},  // 1,023: full scale
      {{255, 0b0001'0011, 255}, {32767, 32767}},    // 1,024 by the quarters that ran over: no more than that
      {{255, 0b1011'1111, 255}, {-32767, 32767}},   //
      {{1, 0, 0, 0, 0b1000'0100, 2}, {128, 0, -32, 256}},  // one triple behind the other
  };
  for (const Row& row : kRows) EXPECT_EQ(Decoded(row.bytes), row.samples) << testing::PrintToString(row.bytes);
}

TEST(SampleDecoder, AHalfTripleIsNoSample) {
  Samples samples{7, 7, 7, 7};
  SampleDecoder::Decode(Stream{0, 0, 0, 255, 255}, samples);
  EXPECT_EQ(samples, (Samples{0, 0, 7, 7}));
}

TEST(SampleDecoder, GivesBackWhatWasCodedAsFarAsTheFormatHoldsIt) {
  std::mt19937 random(20261122);
  for (int run = 0; run < 200; ++run) {
    const int peak = std::uniform_int_distribution(1, 32768)(random);
    const int volume = std::uniform_int_distribution(-100, 100)(random);
    std::uniform_int_distribution value(-peak, std::min(peak, 32767));
    Samples samples(2000);
    for (std::int16_t& sample : samples) sample = static_cast<std::int16_t>(value(random));
    Stream stream(3000);
    SampleCoder(peak, static_cast<std::int16_t>(volume)).Code(samples, stream);
    const Samples decoded = Decoded(stream);
    // In steps of the ten bits; a sixty-fourth for being rounded to a whole sample of 16 bits.
    const double factor = 999.0 / peak * volume / 100;
    for (std::size_t i = 0; i < samples.size(); ++i)
      ASSERT_NEAR(decoded[i] * 1023.0 / 32767, samples[i] * factor, (i % 2 == 0 ? 1.5 : 3.5) + 1.0 / 64)
          << samples[i] << " of " << peak << " at " << volume;
  }
}

TEST(SampleDecoder, AgreesWithThePlainReadingOfEveryTriple) {
  Stream stream;
  for (int middle = 0; middle < 256; ++middle)
    for (const int outer : {0, 1, 63, 64, 127, 249, 254}) {
      stream.push_back(static_cast<std::uint8_t>(outer));
      stream.push_back(static_cast<std::uint8_t>(middle));
      stream.push_back(static_cast<std::uint8_t>(254 - outer));
    }
  const std::vector<int> values = support::DecodeStream(stream);
  const Samples decoded = Decoded(stream);
  ASSERT_EQ(decoded.size(), values.size());
  for (std::size_t i = 0; i < values.size(); ++i)
    // None of these is in the middle between two samples.
    ASSERT_EQ(decoded[i], std::lround(std::clamp(values[i], -1023, 1023) * 32767 / 1023.0)) << values[i];
}

}  // namespace
}  // namespace kestrin::core::sound
