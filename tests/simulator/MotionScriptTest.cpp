// SPDX-License-Identifier: MIT
#include "simulator/MotionScript.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "SimulatorSupport.h"
#include "support/TestFiles.h"

namespace kestrin::simulator {
namespace {

using support::Answers;
using support::Ask;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::vector<SensorValues> Felt(MotionScript script, std::size_t count) {
  std::vector<SensorValues> values;
  while (values.size() < count) values.push_back(script.Next());
  return values;
}

std::vector<SensorValues> Felt(std::string_view text, std::size_t count) {
  const auto script = MotionScript::Parse(text, "moves");
  EXPECT_TRUE(script) << script.Text();
  return Felt(*script, count);
}

TEST(MotionScript, AnEmptyOneLiesStill) {
  EXPECT_THAT(Felt("", 2), ElementsAre(SensorValues{0, 0, 21, 0}, SensorValues{0, 0, 21, 0}));
  EXPECT_THAT(Felt("\n  # nothing\n\n", 1), ElementsAre(SensorValues{0, 0, 21, 0}));
}

TEST(MotionScript, RestsAsItIsHeldInStepsOf40Milliseconds) {
  // 0.08 s are two steps; behind the last line it stays as it is held.
  EXPECT_THAT(Felt("rest 0.08\r\nat 21 -3 0 7  # upright\r\nrest 0.04\r\nat 1 2 3", 5),
              ElementsAre(SensorValues{0, 0, 21, 0}, SensorValues{0, 0, 21, 0}, SensorValues{21, -3, 0, 7},
                          SensorValues{1, 2, 3, 7}, SensorValues{1, 2, 3, 7}));
}

TEST(MotionScript, ATapIsThereAtOnceAndShakesOff) {
  // 16, -8, 4, -2 on y; three tenths of it on x, six tenths the other way on z: 4.8, 2.4, 1.2, 0.6 and 9.6, 4.8, 2.4,
  // 1.2, rounded.
  EXPECT_THAT(Felt("at 0 0 0\ntap 16", 5),
              ElementsAre(SensorValues{5, 16, -10, 0}, SensorValues{-2, -8, 5, 0}, SensorValues{1, 4, -2, 0},
                          SensorValues{-1, -2, 1, 0}, SensorValues{0, 0, 0, 0}));
}

TEST(MotionScript, ASwingGrowsAndShrinksAndStops) {
  const std::vector<SensorValues> felt = Felt("at 0 0 0\nswing 10", 19);
  std::vector<std::int32_t> x;
  for (const SensorValues& values : felt) x.push_back(values.x);
  // The sine of 18, 36, 54, 72 and 90 degrees: 0.309, 0.588, 0.809, 0.951, 1; then six tenths of them.
  EXPECT_THAT(x, ElementsAre(3, 6, 8, 10, 10, 10, 8, 6, 3, -2, -4, -5, -6, -6, -6, -5, -4, -2, 0));
  EXPECT_EQ(felt[4], (SensorValues{10, -5, -3, 0}));
}

TEST(MotionScript, NothingIsFeltBeyondWhatTheSensorTells) {
  EXPECT_EQ(Felt("at 0 20 0\ntap 31", 1)[0].y, 31);
  EXPECT_EQ(Felt("at 0 0 -20\ntap 31", 1)[0].z, -31);
}

TEST(MotionScript, RepeatsFromTheBeginning) {
  EXPECT_THAT(Felt("at 1 1 1\nrest 0.04\nat 2 2 2\nrest 0.04\nrepeat", 3),
              ElementsAre(SensorValues{1, 1, 1, 0}, SensorValues{2, 2, 2, 0}, SensorValues{1, 1, 1, 0}));
}

TEST(MotionScript, SaysInWhichLineWhatIsWrong) {
  struct Row {
    const char* text;
    const char* problem;
  };
  const char* const at =
      "line 1: \"at\" needs three whole numbers from -31 to 31, for x, y and z, and may have a fourth from 0 to 255, "
      "the tilt.";
  const char* const rest = "line 1: \"rest\" needs seconds from 0 to 3600, as in 2 or 0.5.";
  const char* const swing = "line 1: \"swing\" needs one whole number from 1 to 31: its force.";
  const Row rows[] = {
      {"rest 1\n\njump 3", "line 3: \"jump\" is no movement. Allowed are at, rest, swing, tap and repeat."},
      {"Rest 1", "line 1: \"Rest\" is no movement."},
      {"at 0 0", at},
      {"at 0 0 32", at},
      {"at 0 -32 0", at},
      {"at 0 0 0 256", at},
      {"at 0 0 0 0 0", at},
      {"at 0 0 1.5", at},
      {"rest", rest},
      {"rest -1", rest},
      {"rest .", rest},
      {"rest 1.2.3", rest},
      {"rest 1 2", rest},
      {"rest 3601", rest},
      {"rest 1e3", rest},
      {"swing", swing},
      {"swing 0", swing},
      {"swing 32", swing},
      {"swing 5 5", swing},
      {"tap x", "line 1: \"tap\" needs one whole number from 1 to 31: its force."},
      {"rest 1\nrepeat 2", "line 2: \"repeat\" stands alone."},
      {"repeat", "line 1: there is nothing to repeat before this line."},
      {"at 0 0 0\nrepeat", "line 2: there is nothing to repeat before this line."},
      {"rest 1\nrepeat\nrest 1", "line 3: nothing follows \"repeat\"."},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.text);
    const auto script = MotionScript::Parse(row.text, "moves");
    ASSERT_FALSE(script);
    EXPECT_EQ(script.Why().kind, core::base::FailureKind::NotValid);
    EXPECT_THAT(script.Text(), HasSubstr("moves, " + std::string(row.problem)));
  }
}

TEST(MotionScript, ADayIsTheMost) {
  std::string day;
  for (int hour = 0; hour < 24; ++hour) day += "rest 3600\n";
  EXPECT_TRUE(MotionScript::Parse(day, "moves"));
  const auto longer = MotionScript::Parse(day + "tap 9\n", "moves");
  ASSERT_FALSE(longer);
  EXPECT_THAT(
      longer.Text(),
      HasSubstr("moves, line 25: all until here is longer than a day. Write less, with \"repeat\" at the end."));
}

TEST(MotionScript, IsReadFromAFile) {
  const support::TemporaryFolder folder;
  const auto script = MotionScript::Read(support::WriteBytes(folder / "moves.txt", "at 3 4 5\n"));
  ASSERT_TRUE(script) << script.Text();
  EXPECT_THAT(Felt(*script, 1), ElementsAre(SensorValues{3, 4, 5, 0}));
  const auto bad = MotionScript::Read(support::WriteBytes(folder / "bad.txt", "rest 1\nfly\n"));
  EXPECT_THAT(bad.Text(), HasSubstr("bad.txt, line 2: \"fly\" is no movement."));
  const auto none = MotionScript::Read(folder / "none.txt");
  ASSERT_FALSE(none);
  EXPECT_EQ(none.Why().kind, core::base::FailureKind::NotFound);
  EXPECT_THAT(none.Text(), HasSubstr("none.txt"));
}

TEST(SensorOfAVirtualBoard, IsMovedByWhoeverDoesSo) {
  VirtualBoard board;
  SensorValues felt{-1, -31, 31, 200};
  board.MoveBy([&felt] { return felt; });
  // Below zero an axis is sent as 32 more than its magnitude.
  EXPECT_EQ(Ask(board, {40}), (Answers{{33, 63}, {31, 200}}));
  felt = {0, 5, -16, 0};
  EXPECT_EQ(Ask(board, {40}), (Answers{{0, 5}, {48, 0}}));
  felt = {99, -99, 0, 300};
  EXPECT_EQ(Ask(board, {40}), (Answers{{31, 63}, {0, 255}})) << "the nearest that it can tell";
  board.MoveBy({});
  EXPECT_EQ(Ask(board, {40}), (Answers{{0, 0}, {21, 0}}));
}

}  // namespace
}  // namespace kestrin::simulator
