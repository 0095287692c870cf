// SPDX-License-Identifier: MIT
#include "ui/stage/BladeFlash.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrin::ui::stage {
namespace {

/// When flashes begin, asked every two milliseconds.
std::vector<double> Beginnings(BladeFlash& flash, double from, double to) {
  std::vector<double> beginnings;
  bool wasLit = flash.At(from) > 0;
  for (double now = from + 2; now <= to; now += 2) {
    const bool isLit = flash.At(now) > 0;
    if (isLit && !wasLit) beginnings.push_back(now);
    wasLit = isLit;
  }
  return beginnings;
}

TEST(BladeFlash, FlashesOnceWithAHit) {
  for (const double period : {20.0, 52.0, 1000.0}) {
    BladeFlash flash;
    flash.SetFewer(false);
    flash.SetPeriod(period);
    EXPECT_EQ(flash.At(1000), 0);
    flash.Hit(1000);
    EXPECT_EQ(flash.At(1000), 1);
    EXPECT_DOUBLE_EQ(flash.At(1000 + period / 2), 0.5) << "it lasts for the board's flash period";
    EXPECT_FALSE(flash.IsStill(1000 + period / 2));
    EXPECT_EQ(flash.At(1000 + period), 0);
    EXPECT_TRUE(Beginnings(flash, 1000 + period, 4000).empty());
  }
}

TEST(BladeFlash, FlashesWithItsPeriodWhileLockedUp) {
  BladeFlash flash;
  flash.SetFewer(false);
  flash.SetPeriod(100);
  flash.LockUp(1000);
  EXPECT_EQ(flash.At(1000), 1);
  // Half of the period lit, half dark.
  EXPECT_EQ(flash.At(1049), 1);
  EXPECT_EQ(flash.At(1051), 0);
  EXPECT_EQ(Beginnings(flash, 1060, 1450), (std::vector<double>{1100, 1200, 1300, 1400}));
  flash.LetGo();
  EXPECT_TRUE(Beginnings(flash, 1600, 3000).empty());
}

TEST(BladeFlash, FlashesThreeTimesASecondAtMostWhenThereAreToBeFewer) {
  BladeFlash flash;
  flash.SetPeriod(52);
  flash.LockUp(1000);
  const std::vector<double> beginnings = Beginnings(flash, 900, 11000);
  EXPECT_GE(beginnings.size(), 25U) << "it does flash";
  for (std::size_t i = 1; i < beginnings.size(); ++i)
    EXPECT_GE(beginnings[i] - beginnings[i - 1], 1000.0 / 3) << "at " << beginnings[i];
  for (double now = 11002; now < 12000; now += 2) EXPECT_LE(flash.At(now), 0.61) << "softly";
}

TEST(BladeFlash, LeavesOutHitsThatComeTooSoonWhenThereAreToBeFewer) {
  BladeFlash flash;
  std::vector<double> beginnings;
  bool wasLit = false;
  for (double now = 0; now < 2000; now += 2) {
    if (static_cast<int>(now) % 100 == 0) flash.Hit(now);
    const bool isLit = flash.At(now) > 0;
    if (isLit && !wasLit) beginnings.push_back(now);
    wasLit = isLit;
  }
  ASSERT_GE(beginnings.size(), 4U);
  for (std::size_t i = 1; i < beginnings.size(); ++i) EXPECT_GE(beginnings[i] - beginnings[i - 1], 1000.0 / 3);
}

TEST(BladeFlash, DoesNotFlashOnceMoreForAHitFromBeforeTheLockup) {
  BladeFlash flash;
  flash.SetFewer(false);
  flash.Hit(1000);
  static_cast<void>(flash.At(1000));
  flash.LockUp(1300);
  static_cast<void>(flash.At(1310));
  flash.LetGo();
  EXPECT_TRUE(Beginnings(flash, 1400, 3000).empty());
}

TEST(BladeFlash, IsStillWhenNothingFlashesAnyMore) {
  BladeFlash flash;
  EXPECT_TRUE(flash.IsStill(0));
  flash.Hit(100);
  EXPECT_FALSE(flash.IsStill(150));
  EXPECT_TRUE(flash.IsStill(1000));
  flash.LockUp(2000);
  EXPECT_FALSE(flash.IsStill(9000));
  flash.LetGo();
  EXPECT_TRUE(flash.IsStill(9000));
}

}  // namespace
}  // namespace kestrin::ui::stage
