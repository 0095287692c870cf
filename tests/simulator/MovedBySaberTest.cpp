// SPDX-License-Identifier: MIT
#include "simulator/MovedBySaber.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <vector>

#include "core/motion/SensorRecord.h"
#include "core/motion/ThresholdAdvice.h"

namespace kestrin::simulator {
namespace {

using core::motion::SensorRecord;

/// What the panel makes of so many readings, 40 ms apart.
void Watch(MovedBySaber& moved, SensorRecord& record, int readings, std::chrono::milliseconds& at) {
  for (int reading = 0; reading < readings; ++reading, at += std::chrono::milliseconds(40)) {
    const SensorValues felt = moved.Next();
    record.Add({at, felt.x, felt.y, felt.z, felt.tilt});
  }
}

TEST(MovedBySaber, LiesStillWhileNothingIsDone) {
  MovedBySaber moved;
  for (int reading = 0; reading < 100; ++reading) ASSERT_EQ(moved.Next(), kLyingStill);
}

TEST(MovedBySaber, WhatWasDoneBeforeAnybodyWatchedIsFeltInOrder) {
  MovedBySaber moved;
  for (int swing = 0; swing < 5; ++swing) moved.Swing();
  for (int hit = 0; hit < 5; ++hit) moved.Hit();
  SensorRecord record;
  std::chrono::milliseconds at{};
  // 15 readings of rest before each of ten movements; a swing takes 18 of them, a hit 4; and the end of the last.
  Watch(moved, record, 10 * 15 + 5 * 18 + 5 * 4 + 3, at);
  EXPECT_EQ(record.Trial().Swings(), std::vector<std::int32_t>(5, MovedBySaber::kSwingForce));
  EXPECT_EQ(record.Trial().Taps(), std::vector<std::int32_t>(5, MovedBySaber::kHitForce));
  EXPECT_EQ(core::motion::ThresholdAdvice::Of(record.Trial()).threshold, 14);
  EXPECT_EQ(moved.Next(), kLyingStill);
}

TEST(MovedBySaber, OfVeryManyTheOldestAreForgotten) {
  MovedBySaber moved;
  moved.Hit();
  for (std::size_t swing = 0; swing < MovedBySaber::kMost; ++swing) moved.Swing();
  std::int32_t strongest = 0;
  std::int32_t across = 0;
  for (int reading = 0; reading < 20 * 33; ++reading) {
    const SensorValues felt = moved.Next();
    strongest = std::max(strongest, felt.x);
    across = std::max(across, felt.y);
  }
  EXPECT_EQ(strongest, MovedBySaber::kSwingForce);
  EXPECT_LT(across, MovedBySaber::kSwingForce) << "a hit is felt across most";
  EXPECT_EQ(moved.Next(), kLyingStill);
}

}  // namespace
}  // namespace kestrin::simulator
