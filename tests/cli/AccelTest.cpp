// SPDX-License-Identifier: MIT
#include "support/KestrinctlTest.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

using AccelTest = KestrinctlTest;

Json Parameters(int motionTh, int motionDeb, int impactTh, int impactDeb, int impactTm, int focTime) {
  return {{"MotionTh", motionTh},   {"MotionDeb", motionDeb}, {"ImpactTh", impactTh},
          {"ImpactDeb", impactDeb}, {"ImpactTm", impactTm},   {"FOCTime", focTime}};
}

TEST_F(AccelTest, GetShowsTheFactoryValuesOfANewBoard) {
  EXPECT_EQ(RunJson(0, {"--board", "sim", "accel", "get"}), Parameters(180, 2, 10, 50, 125, 52));
}

TEST_F(AccelTest, SetChangesWhatIsNamedAndNothingElse) {
  EXPECT_EQ(RunOnBoard(0, {"accel", "set", "--ImpactTh", "0"}), Parameters(180, 2, 0, 50, 125, 52));
  EXPECT_EQ(RunOnBoard(0, {"accel", "set", "--MotionTh", "255", "--ImpactTm", "1"}), Parameters(255, 2, 0, 50, 1, 52));
  EXPECT_EQ(RunOnBoard(0, {"accel", "get"}), Parameters(255, 2, 0, 50, 1, 52));
  EXPECT_EQ(BoardState()["accelerometer"], Json::array({255, 2, 0, 50, 1, 13}));
  EXPECT_EQ(BoardState()["resets"], 2);
  EXPECT_EQ(RunOnBoard(0, {"accel", "defaults"}), Parameters(180, 2, 10, 50, 125, 52));
  EXPECT_EQ(RunOnBoard(0, {"accel", "get"}), Parameters(180, 2, 10, 50, 125, 52));
}

TEST_F(AccelTest, TheFlashPeriodGoesInUnitsOfFourMilliseconds) {
  // Ties go to the even unit.
  const std::pair<const char*, int> periods[] = {{"20", 5},  {"50", 12}, {"53", 13},
                                                 {"54", 14}, {"58", 14}, {"1000", 250}};
  for (const auto& [milliseconds, units] : periods) {
    EXPECT_EQ(RunOnBoard(0, {"accel", "set", "--FOCTime", milliseconds}, "id=4389")["FOCTime"], 4 * units);
    EXPECT_EQ(BoardState()["accelerometer"][5], units);
  }
}

TEST_F(AccelTest, EveryRangeIsGuardedAndNamed) {
  struct Range {
    const char* option;
    int minimum;
    int maximum;
  };
  const Range ranges[] = {{"MotionTh", 1, 255},  {"MotionDeb", 2, 25}, {"ImpactTh", 0, 31},
                          {"ImpactDeb", 1, 255}, {"ImpactTm", 1, 255}, {"FOCTime", 20, 1000}};
  for (const Range& range : ranges) {
    const std::string option = "--" + std::string(range.option);
    const std::string text = std::to_string(range.minimum) + " to " + std::to_string(range.maximum);
    for (const int value : {range.minimum - 1, range.maximum + 1}) {
      const Finished finished = Run({"--board", Board(), "accel", "set", option, std::to_string(value)});
      EXPECT_EQ(finished.code, 2) << option << value;
      EXPECT_NE(finished.errors.find(text), std::string::npos) << finished.errors;
    }
    for (const int value : {range.minimum, range.maximum})
      EXPECT_EQ(RunOnBoard(0, {"accel", "set", option, std::to_string(value)}, "id=65535")[range.option], value);
    EXPECT_EQ(Run({"--board", Board(), "accel", "set", option, "7.5"}).code, 2);
  }
}

TEST_F(AccelTest, TheFlashPeriodIsRefusedWhereTheBoardHasNone) {
  // Revisions 292 and 293 of the USB2 model, and a model without any.
  for (const char* id : {"id=4388", "id=64"}) {
    const Json document = RunOnBoard(1, {"accel", "set", "--MotionTh", "9", "--FOCTime", "100"}, id);
    EXPECT_EQ(document["error"],
              "This board has no adjustable flash period, so nothing was changed. Leave out --FOCTime to set the other "
              "parameters.");
    EXPECT_EQ(BoardState()["accelerometer"], Json::array({180, 2, 10, 50, 125, 13}));
    EXPECT_EQ(BoardState()["resets"], 0);
  }
  EXPECT_EQ(RunOnBoard(0, {"accel", "set", "--FOCTime", "100"}, "id=4389")["FOCTime"], 100);
}

TEST_F(AccelTest, NothingIsWrittenToABoardThatDidNotSayWhatItIs) {
  // The first answer is missing: it is asked again, and turns out to be an LED driver.
  const std::string late = RunOnBoard(1, {"accel", "defaults"}, "id=4095,fault=read:1")["error"];
  EXPECT_NE(late.find("LED driver"), std::string::npos) << late;
  const std::vector<Arguments> commands = {
      {"accel", "set", "--MotionTh", "9"}, {"accel", "defaults"}, {"accel", "restore"}};
  for (const Arguments& command : commands) {
    const std::string silent = RunOnBoard(1, command, "id=4095," + FailingReads(1, 11))["error"];
    EXPECT_EQ(silent, "The board did not say what it is. Unplug it, plug it in again and repeat this.");
    EXPECT_EQ(RunOnBoard(1, command, "id=0," + FailingReads(1, 11))["error"], silent);
    // Half a serial number, also when it is asked for again.
    EXPECT_EQ(RunOnBoard(1, command, "id=0,fault=read:3,fault=read:5")["error"],
              "The board did not tell its whole serial number. Unplug it, plug it in again and repeat this.");
  }
  EXPECT_EQ(BoardState()["accelerometer"], Json::array({180, 2, 10, 50, 125, 13}));
  EXPECT_EQ(BoardState()["resets"], 0);
  EXPECT_EQ(RunOnBoard(0, {"accel", "set", "--MotionTh", "9"}, "fault=read:3")["MotionTh"], 9) << "asked again";
}

TEST_F(AccelTest, PeopleReadAlignedValues) {
  const Finished finished = Run({"--board", "sim", "accel", "get"});
  EXPECT_EQ(finished.code, 0);
  EXPECT_NE(finished.out.find("\nMotionTh     180  Threshold"), std::string::npos) << finished.out;
  EXPECT_NE(finished.out.find("\nFOCTime       52  Flash period [ms]"), std::string::npos) << finished.out;
}

TEST_F(AccelTest, ABoardThatDoesNotAnswerFails) {
  EXPECT_EQ(RunOnBoard(1, {"accel", "get"}, "fault=read:5")["error"], "The board did not answer.");
  for (const char* fault : {"fault=write:3", "fault=read:4"}) {
    EXPECT_EQ(Keys(RunOnBoard(1, {"accel", "set", "--MotionTh", "9"}, fault)), std::vector<std::string>{"error"});
    EXPECT_EQ(Keys(RunOnBoard(1, {"accel", "defaults"}, fault)), std::vector<std::string>{"error"});
  }
}

TEST_F(AccelTest, RestoreWithoutAnythingKeptFailsAndChangesNothing) {
  static_cast<void>(RunOnBoard(0, {"accel", "set", "--MotionTh", "9"}));
  const Json document = RunOnBoard(1, {"accel", "restore"});
  const std::string error = document["error"];
  EXPECT_NE(error.find("Nothing is kept for this board"), std::string::npos) << error;
  EXPECT_EQ(BoardState()["accelerometer"][0], 9);
}

class AccelRestoreTest : public KestrinctlTest {
 protected:
  /// A download that loses the board when the parameters are to come back.
  void InterruptDownload() {
    static_cast<void>(RunOnBoard(0, {"accel", "set", "--MotionTh", "9", "--FOCTime", "100"}, "id=4389"));
    static_cast<void>(RunOnBoard(1, {"download", m_set.configuration.string()}, "fault=write:5"));
    ASSERT_EQ(BoardState()["accelerometer"], Json::array({255, 255, 255, 255, 255, 255}));
  }

  SoundSet m_set = WriteSoundSet(m_folder.Path());
};

TEST_F(AccelRestoreTest, WhatAnInterruptedDownloadKeptComesBack) {
  InterruptDownload();
  EXPECT_EQ(RunOnBoard(0, {"accel", "restore"}), Parameters(9, 2, 10, 50, 125, 100));
  EXPECT_EQ(BoardState()["accelerometer"], Json::array({9, 2, 10, 50, 125, 25}));
  static_cast<void>(RunOnBoard(1, {"accel", "restore"}));
}

TEST_F(AccelRestoreTest, ItIsKeptPerBoard) {
  InterruptDownload();
  static_cast<void>(RunJson(1, {"--board", "sim:serial=11111111", "accel", "restore"}));
  EXPECT_EQ(RunOnBoard(0, {"accel", "restore"})["MotionTh"], 9);
}

TEST_F(AccelRestoreTest, GetPointsToIt) {
  InterruptDownload();
  const Finished finished = Run({"--board", Board(), "accel", "get"});
  EXPECT_EQ(finished.code, 0);
  EXPECT_NE(finished.errors.find("kestrinctl accel restore"), std::string::npos) << finished.errors;
  static_cast<void>(RunOnBoard(0, {"accel", "restore"}));
  EXPECT_EQ(Run({"--board", Board(), "accel", "get"}).errors, "");
}

TEST_F(AccelRestoreTest, ARestoreThatFailsKeepsThem) {
  InterruptDownload();
  static_cast<void>(RunOnBoard(1, {"accel", "restore"}, "fault=write:3"));
  EXPECT_EQ(RunOnBoard(0, {"accel", "restore"})["MotionTh"], 9);
}

TEST_F(AccelRestoreTest, WhatTheBoardDidNotConfirmStaysKept) {
  // The fourth answer takes the parameters, the fifth would tell them.
  for (const char* const command : {"restore", "defaults"}) {
    InterruptDownload();
    const Finished finished = Run({"--board", Board("fault=read:5"), "accel", command});
    EXPECT_EQ(finished.code, 0);
    EXPECT_NE(finished.errors.find("stays kept"), std::string::npos) << finished.errors;
    EXPECT_EQ(KeptFiles(), 1U) << command;
    const Finished confirmed = Run({"--board", Board(), "accel", command});
    EXPECT_EQ(confirmed.errors, "");
    EXPECT_EQ(KeptFiles(), 0U) << command;
  }
}

}  // namespace
}  // namespace kestrin::support
