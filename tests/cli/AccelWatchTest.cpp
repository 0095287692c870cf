// SPDX-License-Identifier: MIT
#include <csignal>
#include <sstream>

#include "core/base/PathText.h"
#include "support/KestrinctlTest.h"

namespace kestrin::support {
namespace {

class AccelWatchTest : public KestrinctlTest {
 protected:
  /// A board that is moved like this.
  [[nodiscard]] std::string Moved(const std::string& script, const std::string& more = "") const {
    return "sim:motion=" + core::base::TextOf(WriteBytes(m_folder / "moves.txt", script)) + more;
  }
  [[nodiscard]] static std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
  }
};

TEST_F(AccelWatchTest, TellsEachReadingWithItsTime) {
  const Json document =
      RunJson(0, {"--board", Moved("at 1 -2 3 4\nrest 0.04\nat -31 31 0 255"), "accel", "watch", "--seconds", "1"});
  EXPECT_EQ(Keys(document), std::vector<std::string>{"readings"});
  const Json& readings = document["readings"];
  ASSERT_GE(readings.size(), 2U);
  EXPECT_LE(readings.size(), 25U) << "at most that many a second";
  EXPECT_EQ(Keys(readings[0]), (std::vector<std::string>{"ms", "x", "y", "z", "tilt"}));
  EXPECT_EQ(readings[0], (Json{{"ms", 0}, {"x", 1}, {"y", -2}, {"z", 3}, {"tilt", 4}}));
  EXPECT_EQ(readings[1]["x"], -31);
  EXPECT_EQ(readings[1]["tilt"], 255);
  for (std::size_t i = 1; i < readings.size(); ++i) {
    // Each time is cut off to a whole millisecond.
    EXPECT_GE(readings[i]["ms"].get<int>() - readings[i - 1]["ms"].get<int>(), 39) << i;
    EXPECT_LT(readings[i]["ms"].get<int>(), 1000);
  }
}

TEST_F(AccelWatchTest, PeopleReadAlignedRows) {
  const Finished finished = Run({"--board", Moved("at 1 -20 3 104"), "accel", "watch", "--seconds", "1"});
  EXPECT_EQ(finished.code, 0) << finished.errors;
  const std::vector<std::string> lines = Lines(finished.out);
  ASSERT_GE(lines.size(), 3U);
  EXPECT_EQ(lines[0], "      ms    x    y    z  tilt");
  EXPECT_EQ(lines[1], "       0    1  -20    3   104");
  EXPECT_EQ(lines[2].substr(8), "    1  -20    3   104");
  EXPECT_EQ(finished.errors, "");
}

TEST_F(AccelWatchTest, AScriptThatIsWrongIsNamedWithItsLine) {
  const Finished finished = Run({"--board", Moved("rest 1\nfly"), "accel", "watch", "--seconds", "1"});
  EXPECT_EQ(finished.code, 1);
  EXPECT_NE(finished.errors.find("moves.txt, line 2: \"fly\" is no movement."), std::string::npos) << finished.errors;
  EXPECT_EQ(finished.out, "");
}

TEST_F(AccelWatchTest, ABoardThatDoesNotKnowTheQuestionIsToldOf) {
  // Identity and serial number are three answers; the fourth would be the first of the sensor.
  EXPECT_EQ(RunJson(1, {"--board", "sim:fault=read:4", "accel", "watch"})["error"],
            "This board does not tell what its sensor feels. All else works with it as before.");
}

TEST_F(AccelWatchTest, ABoardThatFallsSilentIsToldOfBehindWhatItTold) {
  const Json document = RunJson(1, {"--board", "sim:fault=read:7", "accel", "watch"});
  EXPECT_EQ(document["readings"].size(), 1U) << "of the second reading only one half came";
  const Finished finished = Run({"--board", "sim:fault=read:7", "accel", "watch"});
  EXPECT_EQ(finished.code, 1);
  EXPECT_EQ(Lines(finished.out).size(), 2U) << finished.out;
  EXPECT_EQ(finished.errors,
            "kestrinctl: The board no longer tells what its sensor feels. Check its plug and try again.\n");
}

TEST_F(AccelWatchTest, OtherBoardsThanSoundBoardsAreRefused) {
  const std::string error = RunJson(1, {"--board", "sim:id=4095", "accel", "watch"})["error"];
  EXPECT_NE(error.find("no acceleration sensor"), std::string::npos) << error;
}

TEST_F(AccelWatchTest, TheSecondsAreGuarded) {
  for (const char* const seconds : {"0", "-1", "1.5", "86401"})
    EXPECT_EQ(Run({"--board", "sim", "accel", "watch", "--seconds", seconds}).code, 2) << seconds;
}

TEST_F(AccelWatchTest, ChangesNothingOnTheBoard) {
  static_cast<void>(RunOnBoard(0, {"accel", "set", "--ImpactTh", "7"}));
  Json before = BoardState();
  static_cast<void>(RunOnBoard(0, {"accel", "watch", "--seconds", "1"}));
  Json after = BoardState();
  for (Json* const state : {&before, &after}) state->erase("byes");
  EXPECT_EQ(after, before);
}

#ifndef _WIN32

TEST_F(AccelWatchTest, CtrlCEndsItWithWhatItHasTold) {
  const auto watch = Start({"--board", "sim", "accel", "watch"});
  watch->WaitForOutput("\n       0    0    0   21     0\n");
  watch->Signal(SIGINT);
  const Finished finished = watch->Wait();
  EXPECT_EQ(finished.code, 130);
  EXPECT_EQ(finished.errors, "kestrinctl: Stopped\n");
  EXPECT_TRUE(finished.out.ends_with('\n'));
}

TEST_F(AccelWatchTest, CtrlCLeavesAWholeDocument) {
  const auto watch = Start({"--json", "--board", "sim", "accel", "watch"});
  watch->WaitUntilItCatches(SIGINT);
  watch->Signal(SIGINT);
  const Finished finished = watch->Wait();
  EXPECT_EQ(finished.code, 130) << finished.errors;
  const Json document = Json::parse(finished.out);
  // The signal may have come before the board was there.
  EXPECT_TRUE(document.contains("readings") || document.contains("error")) << finished.out;
}

TEST_F(AccelWatchTest, ReadersThatGoAwayEndIt) {
  const auto watch = Start({"--board", "sim", "accel", "watch"});
  watch->WaitForOutput("tilt\n");
  watch->CloseOutput();
  EXPECT_EQ(watch->Wait().code, 0);
}

TEST_F(AccelWatchTest, OnATerminalOneLineIsDrawnAnew) {
  // A swing of 6, then still: 6 is the hardest from where it rests.
  const Arguments arguments = {"--board", Moved("rest 0.4\nswing 6"), "accel", "watch"};
  const auto watch = Start(arguments, {.output = kTerminal, .columns = 100});
  watch->WaitForOutput("\rx   0   y   0   z  21   tilt   0   hardest from rest  0");
  watch->WaitForOutput("\rx   0   y   0   z  21   tilt   0   hardest from rest  6");
  watch->Signal(SIGINT);
  const Finished finished = watch->Wait();
  EXPECT_EQ(finished.code, 130);
  EXPECT_EQ(finished.out.find("ms"), std::string::npos) << finished.out;
  const auto narrow = Start(arguments, {.output = kTerminal, .columns = 20});
  narrow->WaitForOutput("\rx   0   y   0   z  \r");
}

#endif

}  // namespace
}  // namespace kestrin::support
