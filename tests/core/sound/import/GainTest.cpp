// SPDX-License-Identifier: MIT
#include "core/sound/import/Gain.h"

#include <gtest/gtest.h>

#include "sound/import/ChangeTexts.h"

namespace kestrin::core::sound {
namespace {

struct GainRow {
  const char* what;
  Loudness loudness;
  std::optional<double> level;
  bool isExact;
  double decibels;
  const char* text;
};
constexpr std::nullopt_t kNone = std::nullopt;
const GainRow kRows[] = {
    {"below the ceiling", {-20.0, -3.0}, kNone, false, 0, ""},
    {"above the ceiling", {-10.0, 2.0}, kNone, false, -3.01, "3 dB quieter"},
    {"far above it", {20.0, 40.0}, kNone, false, -41.01, "41 dB quieter"},
    {"16 bits at the ceiling", {-10.0, -1.0}, kNone, true, 0, ""},
    {"16 bits just above it", {-10.0, -0.99}, kNone, true, -0.02, "0.1 dB quieter"},
    {"rounding would lift it above", {-10.0, -1.0}, kNone, false, -0.01, "0.1 dB quieter"},
    {"silence", {kNone, kNone}, kNone, false, 0, ""},
    {"silence to a level", {kNone, kNone}, -16.0, false, 0, ""},
    {"louder", {-20.0, -10.0}, -16.0, false, 4, "4 dB louder"},
    {"quieter", {-10.0, -4.0}, -16.0, false, -6, "6 dB quieter"},
    {"as it is", {-16.02, -4.0}, -16.0, false, 0, ""},
    {"a little", {-16.4, -4.0}, -16.0, false, 0.4, "0.4 dB louder"},
    {"up to the peaks", {-20.0, -3.0}, -16.0, false, 1.99, "2 dB louder, no more is possible"},
    {"down by the peaks", {-20.0, 1.0}, -16.0, false, -2.01, "2 dB quieter, no more is possible"},
    {"at most 12 dB up", {-40.0, -30.0}, -16.0, false, 12, "12 dB louder, no more is possible"},
    {"at most 12 dB down", {-2.0, -1.5}, -23.0, false, -12, "12 dB quieter, no more is possible"},
    {"more than 12 dB down for the peaks", {10.0, 15.0}, -16.0, false, -16.01, "16 dB quieter, no more is possible"},
    {"too quiet to have a loudness", {-60.1, -50.0}, -16.0, false, 0, ""},
    {"just not", {-60.0, -50.0}, -16.0, false, 12, "12 dB louder, no more is possible"},
};

TEST(GainTest, Table) {
  for (const GainRow& row : kRows) {
    const Gain gain = ChooseGain(row.loudness, row.level, row.isExact);
    EXPECT_NEAR(gain.decibels, row.decibels, 1e-9) << row.what;
    EXPECT_EQ(GainText(gain), row.text) << row.what;
  }
}

TEST(GainTest, SixDecibelsAreAHalf) {
  EXPECT_NEAR((Gain{-6.0206, false}).Factor(), 0.5, 1e-5);
  EXPECT_EQ((Gain{0, false}).Factor(), 1);
}

SoundShape Shape(const std::string& format, int bits, bool isLossy = false) {
  SoundShape shape;
  shape.format = format;
  shape.bits = bits;
  shape.isLossy = isLossy;
  return shape;
}

TEST(ChangeTextsTest, Texts) {
  EXPECT_EQ(RateText(48000), "");
  EXPECT_EQ(RateText(44100), "44.1 to 48 kHz");
  EXPECT_EQ(RateText(96000), "96 to 48 kHz");
  EXPECT_EQ(RateText(11025), "11.025 to 48 kHz");
  EXPECT_EQ(RateText(37800), "37.8 to 48 kHz");
  EXPECT_EQ(DepthText(Shape("WAV", 16)), "");
  EXPECT_EQ(DepthText(Shape("WAV", 24)), "24 to 16 bit");
  EXPECT_EQ(DepthText(Shape("WAV", 8)), "8 to 16 bit");
  EXPECT_EQ(DepthText(Shape("WAV", 0)), "float to 16 bit");
  EXPECT_EQ(DepthText(Shape("MP3", 0, true)), "");
  EXPECT_EQ(UnpackedText(Shape("MP3", 0, true)), "MP3 unpacked");
  EXPECT_EQ(UnpackedText(Shape("FLAC", 16)), "");
  EXPECT_EQ(TrimText(0), "");
  EXPECT_EQ(TrimText(14400), "0.3 s silence off");
  EXPECT_EQ(TrimText(480), "0.01 s silence off");
  EXPECT_EQ(TrimText(96000), "2 s silence off");
  EXPECT_EQ(MendedText(0), "");
  EXPECT_EQ(MendedText(1), "1 damaged sample silenced");
  EXPECT_EQ(MendedText(1234), "1234 damaged samples silenced");
}

}  // namespace
}  // namespace kestrin::core::sound
