// SPDX-License-Identifier: MIT
#include "core/motion/SwingTapTrial.h"

#include <gtest/gtest.h>

#include <array>

#include "core/motion/ThresholdAdvice.h"

namespace kestrin::core::motion {
namespace {

using Kind = Movement::Kind;
using Peaks = std::vector<std::int32_t>;

/// A trial with these peaks, as far as they go.
SwingTapTrial Trial(const Peaks& swings, const Peaks& taps) {
  SwingTapTrial trial;
  for (const std::int32_t peak : swings) EXPECT_TRUE(trial.Take({Kind::Swing, peak, {}}));
  for (const std::int32_t peak : taps) EXPECT_TRUE(trial.Take({Kind::Tap, peak, {}}));
  return trial;
}

TEST(SwingTapTrial, TakesFiveSwingsThenFiveTaps) {
  EXPECT_EQ(Trial({}, {}).Turn(), Kind::Swing);
  EXPECT_EQ(Trial({6, 7, 8, 6}, {}).Turn(), Kind::Swing);
  EXPECT_EQ(Trial({6, 7, 8, 6, 7}, {}).Turn(), Kind::Tap);
  EXPECT_EQ(Trial({6, 7, 8, 6, 7}, {17, 22, 19, 18}).Turn(), Kind::Tap);
  SwingTapTrial trial = Trial({6, 7, 8, 6, 7}, {17, 22, 19, 18, 20});
  EXPECT_EQ(trial.Turn(), std::nullopt);
  EXPECT_EQ(trial.Swings(), (Peaks{6, 7, 8, 6, 7}));
  EXPECT_EQ(trial.Taps(), (Peaks{17, 22, 19, 18, 20}));
  EXPECT_FALSE(trial.Take({Kind::Tap, 5, {}}));
  EXPECT_FALSE(trial.Take({Kind::Swing, 31, {}}));
  EXPECT_EQ(trial.Taps().size(), 5U);
  EXPECT_EQ(trial.Ignored(), std::nullopt) << "the person is done";
}

TEST(SwingTapTrial, WhatIsOutOfTurnDoesNotCount) {
  SwingTapTrial trial;
  EXPECT_FALSE(trial.Take({Kind::Tap, 20, {}}));
  EXPECT_EQ(trial.Ignored(), Kind::Tap);
  EXPECT_TRUE(trial.Swings().empty());
  EXPECT_TRUE(trial.Taps().empty());
  for (int i = 0; i < 5; ++i) {
    EXPECT_TRUE(trial.Take({Kind::Swing, 6, {}}));
    EXPECT_EQ(trial.Ignored(), std::nullopt);
  }
  EXPECT_FALSE(trial.Take({Kind::Swing, 30, {}}));
  EXPECT_EQ(trial.Ignored(), Kind::Swing);
  EXPECT_EQ(trial.Swings().size(), 5U);
}

TEST(ThresholdAdvice, IsSilentUntilThereAreTaps) {
  EXPECT_EQ(ThresholdAdvice::Of({}), ThresholdAdvice{});
  EXPECT_EQ(ThresholdAdvice::Of(Trial({6, 7, 8, 6, 7}, {})), ThresholdAdvice{});
}

TEST(ThresholdAdvice, StandsHalfWayBetweenTheHardestSwingAndTheSoftestTap) {
  // (8 + 17) / 2 is 12.5.
  EXPECT_EQ(ThresholdAdvice::Of(Trial({6, 7, 8, 6, 7}, {19, 22, 17})),
            (ThresholdAdvice{12, "Suggestion so far: impact threshold 12.",
                             "Between your hardest swing (8) and your softest tap (17)."}));
  EXPECT_EQ(ThresholdAdvice::Of(Trial({6, 7, 8, 6, 7}, {19, 22, 17, 25, 30})).headline,
            "Suggestion: impact threshold 12.");
}

TEST(ThresholdAdvice, LiesStrictlyBetweenThem) {
  EXPECT_EQ(ThresholdAdvice::Of(Trial({8, 8, 8, 8, 8}, {10})).threshold, 9);
  EXPECT_EQ(ThresholdAdvice::Of(Trial({5, 5, 5, 5, 5}, {31})).threshold, 18);
}

TEST(ThresholdAdvice, SaysWhatToDoWhenThereIsNothingBetweenThem) {
  for (const std::int32_t tap : {9, 8, 5}) {
    const ThresholdAdvice advice = ThresholdAdvice::Of(Trial({6, 7, 8, 6, 7}, {22, tap}));
    EXPECT_EQ(advice.threshold, std::nullopt) << tap;
    EXPECT_EQ(advice.headline, "No suggestion: swings and taps are too much alike.");
    EXPECT_EQ(advice.text, "Your hardest swing (8) leaves no room below your softest tap (" + std::to_string(tap) +
                               "). Start again: swing more gently, or tap harder.");
  }
}

}  // namespace
}  // namespace kestrin::core::motion
