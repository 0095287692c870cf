// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "LedRecords.h"
#include "core/led/LED_Driver.h"

namespace kestrin::core::led {
namespace {

LED_Driver ExampleDriver() {
  LED_Driver driver;
  EXPECT_TRUE(driver.Init(kExampleRecord));
  return driver;
}

TEST(LED_DriverColors, EveryColourWordHasItsFixedValue) {
  struct Row {
    const char* word;
    Color value;
  };
  for (const Row& row : {Row{"white", 0xFFFFFF}, Row{"red", 0x0000FF}, Row{"green", 0x00C000}, Row{"blue", 0xFF8080},
                         Row{"amber", 0x0080FF}})
    EXPECT_EQ(DriverOf(RecordOfColors({row.word})).GetChannelColor(1), row.value) << row.word;
}

TEST(LED_DriverColors, AnUnusedChannelHasNoColour) {
  const LED_Driver driver = DriverOf(RecordOfColors({"red", "green"}));
  EXPECT_EQ(driver.GetChannelColor(2), 0x00C000);
  EXPECT_EQ(driver.GetChannelColor(3), 0);
  EXPECT_EQ(driver.GetChannelColor(4), 0);
}

TEST(LED_DriverColors, AChannelOutsideOneToFourIsRefused) {
  const LED_Driver driver = DriverOf(RecordOfColors({"red"}));
  for (const int channel : {-32768, -1, 0, 5, 32767})
    EXPECT_THROW((void)driver.GetChannelColor(channel), std::out_of_range) << channel;
}

TEST(LED_DriverColors, FindColorGivesTheChannelOfAColour) {
  const LED_Driver driver = DriverOf(RecordOfColors({"amber", "blue", "green", "red"}));
  EXPECT_EQ(driver.FindColor(0x0080FF), 1);
  EXPECT_EQ(driver.FindColor(0xFF8080), 2);
  EXPECT_EQ(driver.FindColor(0x00C000), 3);
  EXPECT_EQ(driver.FindColor(0x0000FF), 4);
}

TEST(LED_DriverColors, FindColorKnowsNoOtherShadeOfTheColours) {
  const LED_Driver driver = DriverOf(RecordOfColors({"red", "green", "blue"}));
  for (const Color color : {0x00FF00, 0xFF0000, 0xFFFFFF, 0}) EXPECT_EQ(driver.FindColor(color), 0) << color;
}

TEST(LED_DriverColors, TheLastOfTwoChannelsOfOneColourIsFound) {
  EXPECT_EQ(DriverOf(RecordOfColors({"white", "white"})).FindColor(0xFFFFFF), 2);
  EXPECT_EQ(DriverOf(RecordOfColors({"red", "white", "red", "white"})).FindColor(0x0000FF), 3);
}

TEST(LED_DriverColors, AnEmptyDriverFindsNothingAndHasZeros) {
  const LED_Driver driver;
  EXPECT_EQ(driver.LEDName, "");
  EXPECT_EQ(driver.NrOfChannels, 0);
  EXPECT_EQ(driver.LedCode, 0);
  EXPECT_EQ(driver.Period, 0);
  EXPECT_EQ(driver.Voltage, 0);
  EXPECT_EQ(driver.OverDrive, 0);
  for (const Color color : {0, 0x0000FF, 0xFFFFFF}) EXPECT_EQ(driver.FindColor(color), 0);
  for (int channel = 1; channel <= 4; ++channel) {
    EXPECT_EQ(driver.GetChannelColor(channel), 0);
    EXPECT_EQ(driver.GetMaxDC(channel), 0);
    EXPECT_EQ(driver.GetMaxLum(channel), 0);
    EXPECT_EQ(driver.GetChannelVoltage(channel), 0);
  }
}

TEST(LED_DriverColors, ChannelsAreClampedToTheOnesInUse) {
  const LED_Driver driver = ExampleDriver();
  struct Row {
    int channel;
    int maxDC;
    int maxLum;
    double voltage;
  };
  for (const Row& row : {Row{-32768, 80, 900, 3.3}, Row{0, 80, 900, 3.3}, Row{1, 80, 900, 3.3}, Row{2, 90, 1500, 3.6},
                         Row{3, 85, 600, 3.6}, Row{4, 85, 600, 3.6}, Row{32767, 85, 600, 3.6}}) {
    EXPECT_EQ(driver.GetMaxDC(row.channel), row.maxDC) << row.channel;
    EXPECT_EQ(driver.GetMaxLum(row.channel), row.maxLum) << row.channel;
    EXPECT_EQ(driver.GetChannelVoltage(row.channel), row.voltage) << row.channel;
  }
}

TEST(ConvertRGBtoLuminance, FollowsTheWeakestOfTheColoursThatAreNotExcepted) {
  // Full luminances of the example: red 900, green 1500, blue 600. At level 255 the weakest one comes out as it is.
  const LED_Driver driver = ExampleDriver();
  struct Row {
    bool exceptR, exceptG, exceptB;
    int weakest;
  };
  for (const Row& row : {Row{false, false, false, 600}, Row{true, false, false, 600}, Row{false, true, false, 600},
                         Row{false, false, true, 900}, Row{true, true, false, 600}, Row{true, false, true, 1500},
                         Row{false, true, true, 900}, Row{true, true, true, 50000}})
    EXPECT_EQ(driver.ConvertRGBtoLuminance(kRed, 255, row.exceptR, row.exceptG, row.exceptB), row.weakest)
        << row.exceptR << row.exceptG << row.exceptB;
}

TEST(ConvertRGBtoLuminance, IsLinearInTheLevelAndRoundsToTheNearest) {
  // Weakest 600: 600 / 255 = 2.35.. -> 2; 128 * 600 / 255 = 301.17.. -> 301; 254 * 600 / 255 = 597.64.. -> 598.
  const LED_Driver driver = ExampleDriver();
  EXPECT_EQ(driver.ConvertRGBtoLuminance(kRed, 0, false, false, false), 0);
  EXPECT_EQ(driver.ConvertRGBtoLuminance(kRed, 1, false, false, false), 2);
  EXPECT_EQ(driver.ConvertRGBtoLuminance(kRed, 128, false, false, false), 301);
  EXPECT_EQ(driver.ConvertRGBtoLuminance(kRed, 254, false, false, false), 598);
}

TEST(ConvertRGBtoLuminance, DoesNotCareForItsColour) {
  const LED_Driver driver = ExampleDriver();
  for (const Color color : {kRed, kGreen, kBlue, kWhite, 0})
    EXPECT_EQ(driver.ConvertRGBtoLuminance(color, 255, false, false, false), 600) << color;
}

TEST(ConvertRGBtoLuminance, WithoutRedGreenAndBlueEveryLevelIsAShareOf50000) {
  // 50000 / 255 = 196.07.. -> 196; 100 * 50000 / 255 = 19607.84.. -> 19608.
  const LED_Driver driver = DriverOf(RecordOfColors({"white"}));
  EXPECT_EQ(driver.ConvertRGBtoLuminance(kWhite, 255, false, false, false), 50000);
  EXPECT_EQ(driver.ConvertRGBtoLuminance(kWhite, 100, false, false, false), 19608);
  EXPECT_EQ(driver.ConvertRGBtoLuminance(kWhite, 1, false, false, false), 196);
  EXPECT_EQ(driver.ConvertRGBtoLuminance(kWhite, 0, false, false, false), 0);
}

TEST(ConvertRGBtoLuminance, OfTwoChannelsOfOneColourTheLastCounts) {
  RecordText record = RecordOfColors({"red", "red"});
  record.channels[0].maxLum = "200";
  record.channels[1].maxLum = "700";
  EXPECT_EQ(DriverOf(record).ConvertRGBtoLuminance(kRed, 255, false, false, false), 700);
}

TEST(ConvertLuminanceToRGB, IsMinusOneForAColourThatNoChannelHas) {
  const LED_Driver driver = ExampleDriver();
  for (const Color color : {kWhite, kAmber, 0, 0x00FF00}) EXPECT_EQ(driver.ConvertLuminanceToRGB(color, 100), -1);
}

TEST(ConvertLuminanceToRGB, GivesTheLevelOnTheChannelOfTheColour) {
  // 450 * 255 / 900 = 127.5 -> 128; 750 * 255 / 1500 = 127.5 -> 128; 100 * 255 / 600 = 42.5 -> 42; 101 -> 42.925 -> 43.
  const LED_Driver driver = ExampleDriver();
  EXPECT_EQ(driver.ConvertLuminanceToRGB(kRed, 0), 0);
  EXPECT_EQ(driver.ConvertLuminanceToRGB(kRed, 900), 255);
  EXPECT_EQ(driver.ConvertLuminanceToRGB(kRed, 450), 128);
  EXPECT_EQ(driver.ConvertLuminanceToRGB(kGreen, 1500), 255);
  EXPECT_EQ(driver.ConvertLuminanceToRGB(kGreen, 750), 128);
  EXPECT_EQ(driver.ConvertLuminanceToRGB(kBlue, 600), 255);
  EXPECT_EQ(driver.ConvertLuminanceToRGB(kBlue, 101), 43);
}

TEST(ConvertLuminanceToRGB, RoundsTiesToTheEvenLevel) {
  // With 510 the level is half the luminance.
  RecordText record = RecordOfColors({"red"});
  record.channels[0].maxLum = "510";
  const LED_Driver driver = DriverOf(record);
  struct Row {
    int luminance;
    int level;
  };
  for (const Row& row : {Row{1, 0}, Row{2, 1}, Row{3, 2}, Row{5, 2}, Row{7, 4}, Row{-1, 0}, Row{-3, -2}, Row{-5, -2}})
    EXPECT_EQ(driver.ConvertLuminanceToRGB(kRed, row.luminance), row.level) << row.luminance;
}

TEST(ConvertLuminanceToRGB, ReportsALuminanceBeyond32BitArithmetic) {
  // 2^31 / 255 = 8421504.5..
  RecordText record = RecordOfColors({"red"});
  record.channels[0].maxLum = "50000";
  const LED_Driver driver = DriverOf(record);
  EXPECT_THROW((void)driver.ConvertLuminanceToRGB(kRed, 8421505), std::overflow_error);
  EXPECT_THROW((void)driver.ConvertLuminanceToRGB(kRed, -8421505), std::overflow_error);
}

TEST(ConvertLuminanceToRGB, ReportsALevelBeyond16Bits) {
  // With 510: 65535 -> 32767.5, which rounds to 32768; 65534 -> 32767.
  RecordText record = RecordOfColors({"red"});
  record.channels[0].maxLum = "510";
  const LED_Driver driver = DriverOf(record);
  EXPECT_EQ(driver.ConvertLuminanceToRGB(kRed, 65534), 32767);
  EXPECT_THROW((void)driver.ConvertLuminanceToRGB(kRed, 65535), std::overflow_error);
}

}  // namespace
}  // namespace kestrin::core::led
