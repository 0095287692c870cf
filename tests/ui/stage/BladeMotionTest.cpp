// SPDX-License-Identifier: MIT
#include "ui/stage/BladeMotion.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kestrin::ui::stage {
namespace {

TEST(BladeMotion, ComesOutInTheTimeOfItsSoundAndGoesInAgain) {
  BladeMotion motion;
  EXPECT_EQ(motion.Extent(), 0);
  motion.Extend(true, 2);
  for (int i = 0; i < 50; ++i) motion.Step(0.02);
  EXPECT_NEAR(motion.Extent(), 0.5, 1e-9);
  for (int i = 0; i < 51; ++i) motion.Step(0.02);
  EXPECT_EQ(motion.Extent(), 1);
  motion.Extend(false, 1);
  for (int i = 0; i < 25; ++i) motion.Step(0.02);
  EXPECT_NEAR(motion.Extent(), 0.5, 1e-9);
  motion.Step(1);
  EXPECT_EQ(motion.Extent(), 0);
}

TEST(BladeMotion, TakesAMomentWithoutASoundToo) {
  BladeMotion motion;
  motion.Extend(true, 0);
  motion.Step(BladeMotion::kQuickest / 2);
  EXPECT_NEAR(motion.Extent(), 0.5, 1e-9);
}

TEST(BladeMotion, FollowsSmoothlyWithoutSwingingOver) {
  BladeMotion motion;
  motion.Aim(50);
  double last = motion.Degrees();
  for (int i = 0; i < 100; ++i) {
    motion.Step(0.016);
    EXPECT_GE(motion.Degrees(), last);
    EXPECT_LE(motion.Degrees(), 50.001);
    EXPECT_LT(motion.Degrees() - last, 12) << "no jump";
    last = motion.Degrees();
  }
  EXPECT_EQ(motion.Degrees(), 50);
  EXPECT_TRUE(motion.IsStill());
}

TEST(BladeMotion, DrawsItsTrailBehindItself) {
  BladeMotion motion;
  motion.Aim(60);
  for (int i = 0; i < 6; ++i) motion.Step(0.016);
  EXPECT_GT(motion.Degrees() - motion.Trail(), 5);
  for (int i = 0; i < 200; ++i) motion.Step(0.016);
  EXPECT_EQ(motion.Trail(), motion.Degrees());
}

TEST(BladeMotion, StaysWithinTheStage) {
  BladeMotion motion;
  motion.Aim(500);
  EXPECT_EQ(motion.Aimed(), BladeMotion::kHighest);
  motion.Aim(-500);
  EXPECT_EQ(motion.Aimed(), BladeMotion::kLowest);
}

TEST(BladeMotion, ShakesForAMoment) {
  BladeMotion motion;
  motion.Step(0.1);
  EXPECT_TRUE(motion.IsStill());
  motion.Shake();
  double widest = 0;
  for (int i = 0; i < 20; ++i) {
    motion.Step(0.01);
    widest = std::max(widest, motion.Degrees() - BladeMotion::kHeld);
    EXPECT_FALSE(motion.IsStill());
  }
  EXPECT_GT(widest, 0.5);
  EXPECT_LT(widest, 3);
  motion.Step(0.4);
  EXPECT_EQ(motion.Degrees(), BladeMotion::kHeld);
  EXPECT_TRUE(motion.IsStill());
}

}  // namespace
}  // namespace kestrin::ui::stage
