// SPDX-License-Identifier: MIT
#include "core/motion/MovementFinder.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace kestrin::core::motion {
inline void PrintTo(const Movement& movement, std::ostream* out) {
  *out << (movement.kind == Movement::Kind::Tap ? "tap " : "swing ") << movement.peak << " at " << movement.at.count();
}

namespace {

using namespace std::chrono_literals;

constexpr Movement Swing(std::int32_t peak, std::chrono::milliseconds at) { return {Movement::Kind::Swing, peak, at}; }
constexpr Movement Tap(std::int32_t peak, std::chrono::milliseconds at) { return {Movement::Kind::Tap, peak, at}; }

/// What is found when these forces of one axis are felt every 40 ms, with a second of quiet behind them.
std::vector<Movement> Found(std::vector<std::int32_t> forces) {
  forces.resize(forces.size() + 25);
  MovementFinder finder;
  std::vector<Movement> found;
  std::chrono::milliseconds at{};
  for (const std::int32_t force : forces) {
    if (const auto movement = finder.Take({0, force, 0}, at)) found.push_back(*movement);
    at += 40ms;
  }
  return found;
}

TEST(MovementFinder, TakesWhatGrowsSlowlyForASwing) {
  // It grows by 3 at most, which is less than half of 8; the peak is the fourth reading.
  EXPECT_EQ(Found({2, 5, 7, 8, 7, 5, 2}), std::vector{Swing(8, 120ms)});
}

TEST(MovementFinder, TakesWhatIsThereAtOnceForATap) {
  EXPECT_EQ(Found({0, 0, 17}), std::vector{Tap(17, 80ms)});
  EXPECT_EQ(Found({0, 9, 18}), std::vector{Tap(18, 80ms)}) << "half of it at once is enough";
  EXPECT_EQ(Found({1, 9, 17, 18}), std::vector{Swing(18, 120ms)}) << "8 is less than half of 18";
}

TEST(MovementFinder, CountsTheShakingOfATapAsPartOfIt) {
  EXPECT_EQ(Found({0, 18, -11, 7, -5, 3, -2, 1}), std::vector{Tap(18, 40ms)});
}

TEST(MovementFinder, CountsBothDirections) { EXPECT_EQ(Found({-2, -5, -7, -5, -2}), std::vector{Swing(7, 80ms)}); }

TEST(MovementFinder, CountsBothHalvesOfASwingAsOne) {
  EXPECT_EQ(Found({3, 5, 7, 5, 3, 1, 0, -1, -3, -5, -8, -5, -3}), std::vector{Swing(8, 400ms)});
}

TEST(MovementFinder, LeavesOutTheTremblingOfAHand) { EXPECT_EQ(Found({4, -4, 4, 0, 4}), std::vector<Movement>{}); }

TEST(MovementFinder, AnyAxisCounts) {
  for (const SensorChange change : {SensorChange{17, 0, 0}, SensorChange{0, 0, -17}}) {
    MovementFinder finder;
    EXPECT_EQ(finder.Take(change, 0ms), std::nullopt);
    for (int i = 0; i < 2; ++i) EXPECT_EQ(finder.Take({}, 0ms), std::nullopt);
    EXPECT_EQ(finder.Take({}, 0ms), Tap(17, 0ms)) << "three quiet readings end a tap";
  }
}

TEST(MovementFinder, ASwingEndsWithEightQuietReadings) {
  MovementFinder finder;
  for (const std::int32_t force : {3, 6}) EXPECT_EQ(finder.Take({force, 0, 0}, 0ms), std::nullopt);
  EXPECT_EQ(finder.Take({8, 0, 0}, 40ms), std::nullopt);
  for (int i = 0; i < 7; ++i) EXPECT_EQ(finder.Take({4, 0, 0}, 80ms), std::nullopt) << i;
  EXPECT_EQ(finder.Take({4, 0, 0}, 80ms), Swing(8, 40ms));
}

TEST(MovementFinder, TellsTwoTapsApart) {
  EXPECT_EQ(Found({0, 17, 0, 0, 0, 22, 0, 0}), (std::vector{Tap(17, 40ms), Tap(22, 200ms)}));
  EXPECT_EQ(Found({0, 17, 0, 0, 22, 0, 0}), std::vector{Tap(22, 160ms)}) << "too close to one another";
}

}  // namespace
}  // namespace kestrin::core::motion
