// SPDX-License-Identifier: MIT
#include "core/led/LED_Pulse.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "LedRecords.h"
#include "core/led/LED_Driver.h"

namespace kestrin::core::led {
namespace {

TEST(LED_Pulse, StartsWithZeros) {
  const LED_Pulse pulse;
  EXPECT_EQ(pulse.Ton, 0);
  EXPECT_EQ(pulse.Toff, 0);
  EXPECT_EQ(pulse.Trise, 0);
  EXPECT_EQ(pulse.Tfall, 0);
  EXPECT_EQ(pulse.NRep, 0);
  for (int channel = 1; channel <= 4; ++channel) {
    EXPECT_EQ(pulse.GetLow(channel), 0);
    EXPECT_EQ(pulse.GetHigh(channel), 0);
    EXPECT_EQ(pulse.GetTon_Low(channel), 0);
    EXPECT_EQ(pulse.GetTon_High(channel), 0);
    EXPECT_EQ(pulse.GetToff_Low(channel), 0);
    EXPECT_EQ(pulse.GetToff_High(channel), 0);
  }
}

TEST(LED_Pulse, ReadsChannelsOutsideOneToFourAsTheNearest) {
  LED_Pulse pulse;
  for (std::int16_t channel = 1; channel <= 4; ++channel) {
    pulse.SetLow(channel, static_cast<std::int16_t>(10 * channel));
    pulse.SetHigh(channel, static_cast<std::int16_t>(10 * channel + 5));
  }
  struct Row {
    int channel;
    int low;
  };
  for (const Row& row : {Row{-32768, 10}, Row{0, 10}, Row{1, 10}, Row{2, 20}, Row{3, 30}, Row{4, 40}, Row{5, 40},
                         Row{7, 40}, Row{32767, 40}}) {
    EXPECT_EQ(pulse.GetLow(row.channel), row.low) << row.channel;
    EXPECT_EQ(pulse.GetHigh(row.channel), row.low + 5) << row.channel;
  }
}

TEST(LED_Pulse, SetsChannelsOutsideOneToFourOnTheNearest) {
  LED_Pulse pulse;
  pulse.SetLow(0, 11);
  pulse.SetHigh(-7, 12);
  pulse.SetLow(5, 41);
  pulse.SetHigh(32767, 42);
  EXPECT_EQ(pulse.GetLow(1), 11);
  EXPECT_EQ(pulse.GetHigh(1), 12);
  EXPECT_EQ(pulse.GetLow(4), 41);
  EXPECT_EQ(pulse.GetHigh(4), 42);
  EXPECT_EQ(pulse.GetLow(2), 0);
  EXPECT_EQ(pulse.GetHigh(3), 0);
}

TEST(LED_Pulse, KeepsLevelsAsTheyAreGiven) {
  LED_Pulse pulse;
  for (const std::int16_t level : {std::int16_t{-32768}, std::int16_t{-1}, std::int16_t{256}, std::int16_t{32767}}) {
    pulse.SetLow(1, level);
    pulse.SetHigh(2, level);
    EXPECT_EQ(pulse.GetLow(1), level);
    EXPECT_EQ(pulse.GetHigh(2), level);
  }
}

TEST(CalculateTimes, FullLevelIsFullDriveAndLevelZeroIsOff) {
  const LED_Driver driver = DriverOf(RecordText{});
  LED_Pulse pulse;
  pulse.SetHigh(1, 255);
  pulse.CalculateTimes(driver);
  EXPECT_EQ(pulse.GetTon_High(1), 1);
  EXPECT_EQ(pulse.GetToff_High(1), 1001);
  EXPECT_EQ(pulse.GetTon_Low(1), 0);
  EXPECT_EQ(pulse.GetToff_Low(1), 1);
}

TEST(CalculateTimes, DrivesEachChannelByItsOwnLuminanceAndCubic) {
  // red, level 100:   L = 100 * 900 / 255 = 352.9.. -> 353,  d = 0.00002 * 353^2 + 0.07 * 353 + 2 = 29.20218,
  //                   t = 10 * d + 1 = 293.0218 -> 293
  // green, level 200: L = 200 * 1500 / 255 = 1176.4.. -> 1176, d = 0.00001 * 1176^2 + 0.05 * 1176 + 1 = 73.62976,
  //                   t = 737.2976 -> 737
  // blue, level 17:   L = 17 * 600 / 255 = 40,  d = 0.0001 * 1600 + 4 + 1 = 5.16, t = 52.6 -> 53
  LED_Driver driver;
  ASSERT_TRUE(driver.Init(kExampleRecord));
  LED_Pulse pulse;
  pulse.SetLow(1, 100);
  pulse.SetLow(2, 200);
  pulse.SetLow(3, 17);
  pulse.SetHigh(1, 17);   // L = 60, d = 0.072 + 4.2 + 2 = 6.272, t = 63.72 -> 64
  pulse.SetHigh(2, 255);  // full
  pulse.SetHigh(3, 0);    // off
  pulse.CalculateTimes(driver);
  EXPECT_EQ(pulse.GetToff_Low(1), 293);
  EXPECT_EQ(pulse.GetToff_Low(2), 737);
  EXPECT_EQ(pulse.GetToff_Low(3), 53);
  EXPECT_EQ(pulse.GetToff_High(1), 64);
  EXPECT_EQ(pulse.GetToff_High(2), 1001);
  EXPECT_EQ(pulse.GetToff_High(3), 1);
  for (int channel = 1; channel <= 3; ++channel) EXPECT_EQ(pulse.GetTon_Low(channel), 1);
  EXPECT_EQ(pulse.GetTon_High(1), 1);
  EXPECT_EQ(pulse.GetTon_High(2), 1);
  EXPECT_EQ(pulse.GetTon_High(3), 0);
}

TEST(CalculateTimes, OverdriveScalesOnlyTheLevelsInBetween) {
  // Blue at level 17 is d = 5.16 at nominal drive; 150 % of it is 7.74, t = 78.4 -> 78.
  LED_Driver driver;
  ASSERT_TRUE(driver.Init(kExampleRecord));
  driver.OverDrive = 150;
  LED_Pulse pulse;
  pulse.SetLow(3, 17);
  pulse.SetHigh(3, 255);
  pulse.CalculateTimes(driver);
  EXPECT_EQ(pulse.GetToff_Low(3), 78);
  EXPECT_EQ(pulse.GetToff_High(3), 1001);
  driver.OverDrive = 50;
  pulse.CalculateTimes(driver);
  EXPECT_EQ(pulse.GetToff_Low(3), 27);  // d = 2.58, t = 26.8
  EXPECT_EQ(pulse.GetToff_High(3), 1001);
}

TEST(CalculateTimes, TheLuminanceIsRoundedBeforeTheCubicIsTaken) {
  // Level 1 of 900 is 3.53 -> 4; d = 0.125 * 4 = 0.5 and t = 10 * 0.5 + 1 = 6 (3.53 would give 5.41 -> 5).
  LED_Driver driver = DriverOf(RecordText{});
  driver.OverDrive = 100;
  LED_Pulse pulse;
  pulse.SetLow(1, 1);
  pulse.CalculateTimes(driver);
  EXPECT_EQ(pulse.GetTon_Low(1), 1);
  EXPECT_EQ(pulse.GetToff_Low(1), 6);
}

TEST(CalculateTimes, ALevelTooSmallForAnyLuminanceIsOff) {
  // Level 1 of 101 is 0.396 -> 0: off; level 2 is 0.79 -> 1: lit, d = 0.125, t = 2.25 -> 2.
  RecordText record;
  record.channels[0].maxLum = "101";
  LED_Driver driver = DriverOf(record);
  driver.OverDrive = 100;
  LED_Pulse pulse;
  pulse.SetLow(1, 1);
  pulse.SetHigh(1, 2);
  pulse.CalculateTimes(driver);
  EXPECT_EQ(pulse.GetTon_Low(1), 0);
  EXPECT_EQ(pulse.GetToff_Low(1), 1);
  EXPECT_EQ(pulse.GetTon_High(1), 1);
  EXPECT_EQ(pulse.GetToff_High(1), 2);
}

TEST(CalculateTimes, ChannelsThatTheLedTypeDoesNotHaveKeepTheirCounts) {
  const LED_Driver four = DriverOf(RecordOfColors({"red", "green", "blue", "amber"}));
  RecordText shortPeriod;
  shortPeriod.period = "50";
  const LED_Driver one = DriverOf(shortPeriod);
  LED_Pulse pulse;
  for (int channel = 1; channel <= 4; ++channel) {
    pulse.SetLow(channel, 255);
    pulse.SetHigh(channel, 255);
  }
  pulse.CalculateTimes(four);
  for (int channel = 1; channel <= 4; ++channel) EXPECT_EQ(pulse.GetToff_High(channel), 1001) << channel;
  for (int channel = 1; channel <= 4; ++channel) pulse.SetHigh(channel, 0);
  pulse.CalculateTimes(one);
  EXPECT_EQ(pulse.GetToff_Low(1), 51);
  EXPECT_EQ(pulse.GetTon_High(1), 0);
  EXPECT_EQ(pulse.GetToff_High(1), 1);
  for (int channel = 2; channel <= 4; ++channel) {
    EXPECT_EQ(pulse.GetTon_Low(channel), 1) << channel;
    EXPECT_EQ(pulse.GetToff_Low(channel), 1001) << channel;
    EXPECT_EQ(pulse.GetTon_High(channel), 1) << channel;
    EXPECT_EQ(pulse.GetToff_High(channel), 1001) << channel;
  }
}

TEST(CalculateTimes, AnEmptyDriverChangesNothing) {
  LED_Pulse pulse;
  pulse.SetHigh(1, 255);
  pulse.CalculateTimes(DriverOf(RecordText{}));
  pulse.CalculateTimes(LED_Driver{});
  EXPECT_EQ(pulse.GetToff_High(1), 1001);
}

TEST(CalculateTimes, LevelsOutsideTheirRangeGiveTheEndsOfTheCounts) {
  RecordText record;
  record.channels[0].maxLum = "50000";
  const LED_Driver driver = DriverOf(record);
  LED_Pulse pulse;
  for (const auto& [level, off] :
       {std::pair{-32768, 1}, std::pair{-1, 1}, std::pair{256, 1001}, std::pair{32767, 1001}}) {
    pulse.SetLow(1, static_cast<std::int16_t>(level));
    pulse.SetHigh(1, static_cast<std::int16_t>(level));
    pulse.CalculateTimes(driver);
    EXPECT_EQ(pulse.GetToff_Low(1), off) << level;
    EXPECT_EQ(pulse.GetToff_High(1), off) << level;
  }
}

TEST(CalculateTimes, KeepsLevelsAndTimes) {
  LED_Pulse pulse;
  pulse.Ton = 1500;
  pulse.Toff = 250.5;
  pulse.Trise = 20;
  pulse.Tfall = 40;
  pulse.NRep = 3;
  pulse.SetLow(1, 30);
  pulse.SetHigh(1, 60);
  pulse.CalculateTimes(DriverOf(RecordText{}));
  EXPECT_EQ(pulse.Ton, 1500);
  EXPECT_EQ(pulse.Toff, 250.5);
  EXPECT_EQ(pulse.Trise, 20);
  EXPECT_EQ(pulse.Tfall, 40);
  EXPECT_EQ(pulse.NRep, 3);
  EXPECT_EQ(pulse.GetLow(1), 30);
  EXPECT_EQ(pulse.GetHigh(1), 60);
}

TEST(LED_Pulse, TheBoardHoldsTimesUpTo65535Milliseconds) {
  for (double LED_Pulse::*const time : {&LED_Pulse::Ton, &LED_Pulse::Toff, &LED_Pulse::Trise, &LED_Pulse::Tfall}) {
    LED_Pulse pulse;
    EXPECT_FALSE(pulse.IsTooLongForBoard());
    // Times go out rounded, ties to the even number.
    for (const double fits : {-1e9, 20.0, 65535.0, 65535.4}) {
      pulse.*time = fits;
      EXPECT_FALSE(pulse.IsTooLongForBoard()) << fits;
    }
    for (const double tooLong : {65535.5, 65536.0, 65540.0, 10000000.0, std::numeric_limits<double>::max()}) {
      pulse.*time = tooLong;
      EXPECT_TRUE(pulse.IsTooLongForBoard()) << tooLong;
    }
  }
}

}  // namespace
}  // namespace kestrin::core::led
