// SPDX-License-Identifier: MIT
#include "core/motion/SensorRest.h"

#include <gtest/gtest.h>

namespace kestrin::core::motion {
namespace {

/// What becomes of that many readings of the same.
SensorChange Hold(SensorRest& rest, int readings, std::int32_t x, std::int32_t y, std::int32_t z) {
  SensorChange change;
  for (int i = 0; i < readings; ++i) change = rest.Follow({{}, x, y, z, 0});
  return change;
}

TEST(SensorRest, IsKnownWhenTheSaberWasHeldStillFor10Readings) {
  SensorRest rest;
  EXPECT_EQ(Hold(rest, 9, 0, 0, 21), (SensorChange{0, 0, 0}));
  EXPECT_FALSE(rest.IsKnown());
  EXPECT_EQ(Hold(rest, 1, 0, 0, 21), (SensorChange{0, 0, 0}));
  EXPECT_TRUE(rest.IsKnown());
  EXPECT_EQ(rest.Follow({{}, 5, -7, 10, 0}), (SensorChange{5, -7, -11}));
}

TEST(SensorRest, IsTheMeanOfWhatTrembles) {
  SensorRest rest;
  // Five of 20 and five of 22.
  for (int i = 0; i < 5; ++i) {
    static_cast<void>(rest.Follow({{}, 20, 0, 0, 0}));
    static_cast<void>(rest.Follow({{}, 22, 0, 0, 0}));
  }
  ASSERT_TRUE(rest.IsKnown());
  EXPECT_EQ(rest.Follow({{}, 31, 0, 0, 0}), (SensorChange{10, 0, 0}));
}

TEST(SensorRest, IsNotKnownWhileAnAxisMovesByMoreThanATremble) {
  SensorRest rest;
  for (int i = 0; i < 20; ++i) static_cast<void>(rest.Follow({{}, 0, i % 2 == 0 ? 0 : 3, 0, 0}));
  EXPECT_FALSE(rest.IsKnown());
}

TEST(SensorRest, UntilItIsKnownTheFirstReadingStandsForIt) {
  SensorRest rest;
  static_cast<void>(rest.Follow({{}, 4, 4, 4, 0}));
  EXPECT_EQ(rest.Follow({{}, 10, 4, 1, 0}), (SensorChange{6, 0, -3}));
}

TEST(SensorRest, FollowsToWhereTheSaberIsHeldNext) {
  SensorRest rest;
  static_cast<void>(Hold(rest, 10, 0, 0, 21));
  EXPECT_EQ(Hold(rest, 9, 21, 0, 0), (SensorChange{21, 0, -21}));
  EXPECT_EQ(Hold(rest, 1, 21, 0, 0), (SensorChange{0, 0, 0}));
}

TEST(SensorRest, ABlowDoesNotMoveIt) {
  SensorRest rest;
  static_cast<void>(Hold(rest, 10, 0, 0, 21));
  EXPECT_EQ(Hold(rest, 2, 0, 17, 21), (SensorChange{0, 17, 0}));
  EXPECT_EQ(Hold(rest, 1, 0, 0, 21), (SensorChange{0, 0, 0}));
}

}  // namespace
}  // namespace kestrin::core::motion
