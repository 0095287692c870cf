// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

#include "LedRecords.h"
#include "core/led/LED_Driver.h"

namespace kestrin::core::led {
namespace {

constexpr auto kDuty = SetType::DutyCycle;
constexpr auto kLum = SetType::Luminance;
constexpr auto kShare = SetType::PercentOfMaxDC;

/// One channel, MDC 80, ML 900, duty cycle = luminance / 8, period and overdrive as given.
LED_Driver Driver(int period, double overDrive) {
  RecordText record;
  record.period = std::to_string(period);
  LED_Driver driver = DriverOf(record);
  driver.OverDrive = overDrive;
  return driver;
}

TEST(SetType, HasTheNumbersOfItsInterface) {
  EXPECT_EQ(static_cast<std::int32_t>(kDuty), 0);
  EXPECT_EQ(static_cast<std::int32_t>(kLum), 1);
  EXPECT_EQ(static_cast<std::int32_t>(kShare), 2);
}

TEST(GetTon, FollowsItsTable) {
  const LED_Driver driver = Driver(1000, 100);
  struct Row {
    SetType type;
    double value;
    int ton;
  };
  for (const Row& row :
       {Row{kDuty, 0, 0}, Row{kDuty, -0.0, 0}, Row{kDuty, 0.001, 1}, Row{kDuty, 50, 1}, Row{kDuty, 100, 1},
        Row{kDuty, 101, 1}, Row{kDuty, -1, 1}, Row{kLum, 0, 0}, Row{kLum, 0.001, 1}, Row{kLum, 100, 1},
        Row{kLum, 900, 1}, Row{kLum, -1, 1}, Row{kShare, 0, 0}, Row{kShare, 0.001, 1}, Row{kShare, 100, 1},
        Row{kShare, -1, 1}, Row{SetType{3}, 0, 1}, Row{SetType{3}, 100, 1}, Row{SetType{-1}, 0, 1}})
    EXPECT_EQ(driver.GetTon(row.type, 1, row.value), row.ton) << static_cast<int>(row.type) << ", " << row.value;
}

TEST(GetTon, OfADriverWithoutARecordIsOneOnlyForFullDrive) {
  const LED_Driver driver;
  EXPECT_EQ(driver.GetTon(kDuty, 1, 100), 1);
  EXPECT_EQ(driver.GetTon(kShare, 1, 100), 1);
  EXPECT_EQ(driver.GetTon(kLum, 1, 100), 0);
  EXPECT_EQ(driver.GetTon(kDuty, 1, 50), 0);
}

TEST(GetToff, IsOneForNothingAndForLess) {
  const LED_Driver driver = Driver(1000, 100);
  for (const SetType type : {kDuty, kLum, kShare})
    for (const double value : {0.0, -0.0, -0.5, -100.0, -std::numeric_limits<double>::infinity()})
      EXPECT_EQ(driver.GetToff(type, 1, value), 1) << static_cast<int>(type) << ", " << value;
}

TEST(GetToff, IsOneForAnyOtherKindOfValue) {
  const LED_Driver driver = Driver(1000, 100);
  for (const int type : {3, -1, 100, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
    for (const double value : {-1.0, 0.0, 50.0, 100.0, 1e9})
      EXPECT_EQ(driver.GetToff(static_cast<SetType>(type), 1, value), 1) << type << ", " << value;
}

TEST(GetToff, FullDriveIsNotScaledByOverdrive) {
  for (const double overDrive : {0.0, 1.0, 50.0, 100.0, 200.0}) {
    const LED_Driver driver = Driver(1000, overDrive);
    EXPECT_EQ(driver.GetToff(kDuty, 1, 100), 1001) << overDrive;
    EXPECT_EQ(driver.GetToff(kDuty, 1, 1e300), 1001) << overDrive;
    EXPECT_EQ(driver.GetToff(kLum, 1, 900), 1001) << overDrive;
    EXPECT_EQ(driver.GetToff(kLum, 1, 50000), 1001) << overDrive;
  }
}

TEST(GetToff, ADutyCycleIsCutToTheHighestOfTheChannelAndThenScaled) {
  // MDC 80: 99.9 counts as 80; half of it is 40: t = 1000 * 40 / 100 + 1.
  EXPECT_EQ(Driver(1000, 50).GetToff(kDuty, 1, 99.9), 401);
  EXPECT_EQ(Driver(1000, 100).GetToff(kDuty, 1, 99.9), 801);
  EXPECT_EQ(Driver(1000, 100).GetToff(kDuty, 1, 80), 801);
  EXPECT_EQ(Driver(1000, 100).GetToff(kDuty, 1, 79.9), 800);
  EXPECT_EQ(Driver(1000, 110).GetToff(kDuty, 1, 30), 331);
}

TEST(GetToff, OverdriveLiftsTheDutyCycleUpToFull) {
  EXPECT_EQ(Driver(1000, 124).GetToff(kDuty, 1, 80), 993);   // 99.2 %
  EXPECT_EQ(Driver(1000, 125).GetToff(kDuty, 1, 80), 1001);  // 100 %
  EXPECT_EQ(Driver(1000, 200).GetToff(kDuty, 1, 80), 1001);  // 160 %, cut to 100 %
  EXPECT_EQ(Driver(1000, 200).GetToff(kLum, 1, 400), 1001);  // 50 % twice
}

TEST(GetToff, WithoutOverdriveEverythingInBetweenIsOff) {
  const LED_Driver driver = Driver(1000, 0);
  EXPECT_EQ(driver.GetToff(kDuty, 1, 50), 1);
  EXPECT_EQ(driver.GetToff(kLum, 1, 400), 1);
  EXPECT_EQ(driver.GetToff(kShare, 1, 100), 1);
  EXPECT_EQ(Driver(1000, -50).GetToff(kDuty, 1, 50), 1);
}

TEST(GetToff, ALuminanceGoesThroughTheCubic) {
  // d = luminance / 8
  const LED_Driver driver = Driver(1000, 100);
  EXPECT_EQ(driver.GetToff(kLum, 1, 8), 11);
  EXPECT_EQ(driver.GetToff(kLum, 1, 400), 501);
  EXPECT_EQ(driver.GetToff(kLum, 1, 792), 991);   // 99 %
  EXPECT_EQ(driver.GetToff(kLum, 1, 800), 1001);  // 100 %
  EXPECT_EQ(driver.GetToff(kLum, 1, 899), 1001);  // 112 %, cut to 100 %
}

TEST(GetToff, ALuminanceIsNotCutToTheHighestDutyCycleOfTheChannel) {
  EXPECT_EQ(Driver(1000, 100).GetToff(kLum, 1, 720), 901);  // 90 % although MDC is 80
}

TEST(GetToff, ACubicBelowNothingIsOff) {
  RecordText record;
  record.channels[0].dutyCoef = "0_0_0.125_-10";
  LED_Driver driver = DriverOf(record);
  driver.OverDrive = 100;
  EXPECT_EQ(driver.GetToff(kLum, 1, 40), 1);   // 5 - 10
  EXPECT_EQ(driver.GetToff(kLum, 1, 80), 1);   // exactly 0
  EXPECT_EQ(driver.GetToff(kLum, 1, 88), 11);  // 1 %
}

TEST(GetToff, APercentageIsAShareOfTheHighestDutyCycleAndScaledAlsoAtItsEnd) {
  EXPECT_EQ(Driver(1000, 100).GetToff(kShare, 1, 50), 401);
  EXPECT_EQ(Driver(1000, 100).GetToff(kShare, 1, 100), 801);
  EXPECT_EQ(Driver(1000, 100).GetToff(kShare, 1, 1000), 801);
  EXPECT_EQ(Driver(1000, 50).GetToff(kShare, 1, 100), 401);
  EXPECT_EQ(Driver(1000, 125).GetToff(kShare, 1, 100), 1001);
}

TEST(GetToff, ALitChannelIsNeverBelowTwo) {
  EXPECT_EQ(Driver(10, 100).GetToff(kDuty, 1, 0.001), 2);
  EXPECT_EQ(Driver(10000, 100).GetToff(kDuty, 1, 0.001), 2);
  EXPECT_EQ(Driver(10000, 1).GetToff(kLum, 1, 1), 2);
  EXPECT_EQ(Driver(10, 100).GetToff(kShare, 1, 0.001), 2);
}

TEST(GetToff, RoundsTheFinishedCountWithTiesToTheEven) {
  // t = d / 10 + 1: 1.5 -> 2, 2.5 -> 2, 3.5 -> 4, 4.5 -> 4, 5.5 -> 6.
  const LED_Driver driver = Driver(10, 100);
  struct Row {
    double duty;
    int toff;
  };
  for (const Row& row : {Row{5, 2}, Row{15, 2}, Row{25, 4}, Row{35, 4}, Row{45, 6}, Row{55, 6}, Row{65, 8}, Row{75, 8}})
    EXPECT_EQ(driver.GetToff(kDuty, 1, row.duty), row.toff) << row.duty;
}

TEST(GetToff, RoundsUpToFullDriveButNotBeyond) {
  RecordText record;
  record.period = "10";
  record.channels[0].maxDC = "100";
  LED_Driver driver = DriverOf(record);
  driver.OverDrive = 100;
  EXPECT_EQ(driver.GetToff(kDuty, 1, 99.9), 11);  // 10.99
  EXPECT_EQ(driver.GetToff(kDuty, 1, 94), 10);    // 10.4
}

TEST(GetToff, UsesTheFieldsOfTheClampedChannel) {
  LED_Driver driver;
  ASSERT_TRUE(driver.Init(kExampleRecord));  // MDC 80, 90, 85
  struct Row {
    int channel;
    int toff;
  };
  for (const Row& row : {Row{-5, 801}, Row{0, 801}, Row{1, 801}, Row{2, 901}, Row{3, 851}, Row{4, 851}, Row{99, 851}}) {
    EXPECT_EQ(driver.GetToff(kShare, row.channel, 100), row.toff) << row.channel;
    EXPECT_EQ(driver.GetTon(kShare, row.channel, 100), 1) << row.channel;
  }
}

TEST(GetToff, SomethingThatIsNoNumberIsOff) {
  LED_Driver driver = Driver(1000, 100);
  for (const SetType type : {kDuty, kLum, kShare})
    EXPECT_EQ(driver.GetToff(type, 1, std::numeric_limits<double>::quiet_NaN()), 1);
  driver.OverDrive = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(driver.GetToff(kDuty, 1, 50), 1);
}

TEST(GetToff, CoefficientsOfAbsurdSizeNeitherThrowNorLight) {
  // Infinity minus infinity has no value.
  RecordText record;
  record.channels[0].dutyCoef = "1e305_-1e307_0_0";
  LED_Driver driver = DriverOf(record);
  driver.OverDrive = 100;
  EXPECT_EQ(driver.GetToff(kLum, 1, 899), 1);
}

TEST(GetToff, ADutyCycleFarAboveFullIsFullDrive) {
  RecordText record;
  record.channels[0].dutyCoef = "0_0_1e300_0";
  LED_Driver driver = DriverOf(record);
  driver.OverDrive = 100;
  EXPECT_EQ(driver.GetToff(kLum, 1, 1), 1001);
  EXPECT_EQ(driver.GetToff(kLum, 1, 899), 1001);
}

TEST(GetToff, OfADriverWithoutARecordIsOne) {
  const LED_Driver driver;
  for (const SetType type : {kDuty, kLum, kShare})
    for (const double value : {-1.0, 0.0, 50.0, 100.0}) EXPECT_EQ(driver.GetToff(type, 1, value), 1);
}

TEST(GetToff, ReportsAPeriodThatHasNoSuccessor) {
  LED_Driver driver = Driver(1000, 100);
  driver.Period = std::numeric_limits<std::int32_t>::max();
  EXPECT_THROW((void)driver.GetToff(kDuty, 1, 100), std::overflow_error);
}

}  // namespace
}  // namespace kestrin::core::led
