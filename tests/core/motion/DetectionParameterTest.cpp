// SPDX-License-Identifier: MIT
#include "core/motion/DetectionParameter.h"

#include <gtest/gtest.h>

namespace kestrin::core::motion {
namespace {

struct ParameterRow {
  const char* name;
  const char* caption;
  const char* group;
  int minimum, maximum, step, factoryDefault;
};

TEST(DetectionParameters, StandInCommandOrderWithTheirRanges) {
  constexpr const char* kMotion = "MOTION DETECTION PARAMETERS";
  constexpr const char* kImpact = "IMPACT DETECTION PARAMETERS";
  const ParameterRow rows[] = {
      {"MotionTh", "Threshold", kMotion, 1, 255, 1, 180},
      {"MotionDeb", "Integration Time", kMotion, 2, 25, 1, 2},
      {"ImpactTh", "Threshold", kImpact, 0, 31, 1, 10},
      {"ImpactDeb", "Debouncing Time", kImpact, 1, 255, 1, 50},
      {"ImpactTm", "Minimum time between repetitions", kImpact, 1, 255, 1, 125},
      {"FOCTime", "Flash period [ms]", "LOCKUP FLASH TIMING", 20, 1000, 4, 52},
  };
  ASSERT_EQ(std::size(rows), kDetectionParameters.size());
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const DetectionParameter& parameter = kDetectionParameters[i];
    EXPECT_EQ(parameter.name, rows[i].name);
    EXPECT_EQ(parameter.caption, rows[i].caption);
    EXPECT_EQ(parameter.group, rows[i].group);
    EXPECT_EQ(parameter.minimum, rows[i].minimum);
    EXPECT_EQ(parameter.maximum, rows[i].maximum);
    EXPECT_EQ(parameter.step, rows[i].step);
    EXPECT_EQ(parameter.factoryDefault, rows[i].factoryDefault);
  }
}

TEST(FlashPeriod, IsThereFromRevision293On) {
  for (const std::uint16_t revision : std::initializer_list<std::uint16_t>{0, 1, 292})
    EXPECT_FALSE(HasFlashPeriod(revision)) << revision;
  for (const std::uint16_t revision : std::initializer_list<std::uint16_t>{293, 294, 4095})
    EXPECT_TRUE(HasFlashPeriod(revision)) << revision;
}

TEST(FlashPeriod, GoesOutInUnitsOf4MillisecondsTiesToTheEvenUnit) {
  const struct {
    int milliseconds, units;
  } cases[] = {{52, 13}, {53, 13}, {54, 14}, {50, 12}, {58, 14}, {20, 5}, {1000, 250}, {51, 13}, {55, 14}, {49, 12}};
  for (const auto& c : cases) EXPECT_EQ(FlashPeriodUnits(c.milliseconds), c.units) << c.milliseconds;
}

TEST(FlashPeriod, ComesInUnitsOf4Milliseconds) {
  EXPECT_EQ(FlashPeriodMilliseconds(13), 52);
  EXPECT_EQ(FlashPeriodMilliseconds(255), 1020);
}

TEST(DetectionParameters, ShowTheFlashPeriodInMillisecondsAndTheOthersAsTheyAre) {
  device::AccParam board{1, 2, 3, 4, 5, 6};
  const int shown[] = {1, 2, 3, 4, 5, 24};
  for (std::size_t i = 0; i < kDetectionParameters.size(); ++i)
    EXPECT_EQ(ShownValue(kDetectionParameters[i], board), shown[i]);
  for (const DetectionParameter& parameter : kDetectionParameters) SetShownValue(parameter, board, 100);
  EXPECT_EQ(board, (device::AccParam{100, 100, 100, 100, 100, 25}));
}

TEST(FactoryDefaults, AreWhatABoardLeavesTheFactoryWith) {
  EXPECT_EQ(FactoryDefaults(), (device::AccParam{180, 2, 10, 50, 125, 13}));
}

TEST(DetectionParameters, ThatABoardHoldsOutOfRangeAreTheNearestInside) {
  const device::AccParam none{0, 0, 0, 0, 0, 0};
  EXPECT_EQ(InRange(none, 293), (device::AccParam{1, 2, 0, 1, 1, 5}));
  const device::AccParam all{255, 255, 255, 255, 255, 255};
  EXPECT_EQ(InRange(all, 293), (device::AccParam{255, 25, 31, 255, 255, 250}));
  const device::AccParam inside{180, 2, 10, 50, 125, 14};
  EXPECT_EQ(InRange(inside, 293), inside);
  // What an older board holds as its flash period is none: 52 ms are 13 units.
  EXPECT_EQ(InRange(inside, 292), (device::AccParam{180, 2, 10, 50, 125, 13}));
}

}  // namespace
}  // namespace kestrin::core::motion
