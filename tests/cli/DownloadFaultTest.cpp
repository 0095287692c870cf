// SPDX-License-Identifier: MIT
#include "support/KestrinctlTest.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

struct Fault {
  std::string key;
  std::string outcome;
  std::string information;
  int code = 1;
};

/// What goes over the wire: identity (written 1, read 1), serial number (2; 2, 3), detection parameters (3; 4 to 6),
/// erase (4; 7), parameters back (5; 8), the sounds from (6; 9) on, then table, checksum, restart, good-bye.
constexpr int kFirstBlock = 6;
constexpr int kAnswerToFirstBlock = 9;

class DownloadFaultTest : public KestrinctlTest {
 protected:
  SoundSet m_set = WriteSoundSet(m_folder.Path());
  int m_blocks = m_set.WriteReports();
};

TEST_F(DownloadFaultTest, EveryFaultHasItsEndingAndTheNextDownloadWorks) {
  const auto at = [](const char* key, int number) {
    return "fault=" + std::string(key) + ":" + std::to_string(number);
  };
  const int table = kFirstBlock + m_blocks;
  const int answerToTable = kAnswerToFirstBlock + m_blocks;
  const std::string lost = "Connection lost";
  const std::string check = "Memory check error";
  const Fault faults[] = {
      // Who takes no question is not asked another one; which board it is, is asked again.
      {at("write", 1), "connection-lost", lost},
      {at("write", 2), "success", "SUCCESS !", 0},
      {at("read", 2), "success", "SUCCESS !", 0},
      {at("read", 3), "success", "SUCCESS !", 0},
      {at("read", 3) + "," + at("read", 5), "connection-lost", "The board told only half of its serial number."},
      {at("write", 3), "connection-lost", lost},
      {at("read", 4), "connection-lost", lost},
      {at("read", 6), "connection-lost", lost},
      {at("write", 4), "connection-lost", lost},
      {at("write", 5), "connection-lost", lost},
      {at("read", 8), "connection-lost", lost},
      {at("write", kFirstBlock), "connection-lost", lost},
      {at("read", kAnswerToFirstBlock), "connection-lost", lost},
      {at("flip", kFirstBlock), "connection-lost", lost},
      {at("write", table - 1), "connection-lost", lost},
      {at("flip", table - 1), "connection-lost", lost},
      {at("write", table), "memory-check-error", check},
      {at("read", answerToTable), "memory-check-error", check},
      {at("flip", table), "memory-check-error", check},
      {at("write", table + 1), "memory-check-error", check},
      {at("read", answerToTable + 1), "memory-check-error", check},
      {at("write", table + 2), "success", "SUCCESS !", 0},
      {at("write", table + 3), "success", "SUCCESS !", 0},
      {at("unplug", 1), "connection-lost", lost},
      {at("unplug", 6), "connection-lost", lost},
      {at("unplug", 11), "connection-lost", lost},
      {at("unplug", 12), "connection-lost", lost},
      {at("unplug", 13), "connection-lost", lost},
      {at("unplug", 14), "connection-lost", lost},
      {at("unplug", 20), "connection-lost", lost},
      {at("unplug", table + answerToTable - 1), "memory-check-error", check},
  };
  static_cast<void>(RunOnBoard(0, {"accel", "set", "--MotionTh", "33", "--ImpactTm", "200"}));
  const Json parameters = BoardState()["accelerometer"];

  for (const Fault& fault : faults) {
    SCOPED_TRACE(fault.key);
    const Json document = RunOnBoard(fault.code, {"download", m_set.configuration.string()}, fault.key);
    EXPECT_EQ(document["outcome"], fault.outcome);
    EXPECT_EQ(document["information"], fault.information);
    // Whatever the board lost is kept here.
    if (BoardState()["accelerometer"] != parameters) {
      EXPECT_EQ(KeptFiles(), 1U);
    }

    EXPECT_EQ(RunOnBoard(0, {"download", m_set.configuration.string()})["outcome"], "success");
    EXPECT_EQ(BoardState()["accelerometer"], parameters);
    EXPECT_EQ(KeptFiles(), 0U);
    EXPECT_EQ(RunOnBoard(0, {"verify", m_set.configuration.string()})["verified"], true);
  }
}

TEST_F(DownloadFaultTest, WhatTheBoardHoldsIsSaidWithTheFailure) {
  const Finished finished = Run({"--board", Board("fault=write:5"), "download", m_set.configuration.string()});
  EXPECT_EQ(finished.code, 1);
  EXPECT_EQ(finished.out, "Erasing flash memory ...\n");
  EXPECT_EQ(finished.errors,
            "kestrinctl: Connection lost\n"
            "The board holds no complete sound set. Repeat the download before you use the saber. "
            "Its motion and impact parameters are kept safe on this computer and come back with the next download.\n");
}

TEST_F(DownloadFaultTest, ABoardThatIsUnpluggedBeforeTheEraseKeepsItsSounds) {
  static_cast<void>(RunOnBoard(0, {"download", m_set.configuration.string()}));
  const std::string flash = Flash();
  // Report 10 asks for the erase.
  for (int number = 1; number <= 10; ++number) {
    static_cast<void>(
        RunOnBoard(1, {"download", m_set.configuration.string()}, "fault=unplug:" + std::to_string(number)));
    EXPECT_EQ(Flash(), flash) << number;
  }
}

}  // namespace
}  // namespace kestrin::support
