// SPDX-License-Identifier: MIT
#include "core/base/TimeLeft.h"

#include <gtest/gtest.h>

namespace kestrin::core::base {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

TEST(TimeLeft, FollowsFromWhatWasDoneInTheTimeSoFar) {
  EXPECT_EQ(SecondsLeft(seconds(10), 50), 10);
  EXPECT_EQ(SecondsLeft(seconds(10), 25), 30);
  EXPECT_EQ(SecondsLeft(seconds(9), 90), 1);
  EXPECT_EQ(SecondsLeft(seconds(1), 1), 99);
}

TEST(TimeLeft, IsNotKnownAtTheStartAndNotNeededAtTheEnd) {
  EXPECT_EQ(SecondsLeft(seconds(10), 0), std::nullopt);
  EXPECT_EQ(SecondsLeft(seconds(10), 100), std::nullopt);
  EXPECT_EQ(SecondsLeft(milliseconds(999), 50), std::nullopt);
}

TEST(TimeLeft, IsWrittenAsMinutesAndTwoDigitsOfSeconds) {
  EXPECT_EQ(MinutesAndSeconds(0), "0:00");
  EXPECT_EQ(MinutesAndSeconds(9), "0:09");
  EXPECT_EQ(MinutesAndSeconds(60), "1:00");
  EXPECT_EQ(MinutesAndSeconds(754), "12:34");
}

}  // namespace
}  // namespace kestrin::core::base
