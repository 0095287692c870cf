// SPDX-License-Identifier: MIT
#include "DownloadFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrin::core::sound {
namespace {

using support::AnsweringBoard;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr device::AccParam kErased{255, 255, 255, 255, 255, 255};

TEST_F(DownloadTest, GoesStepByStep) {
  EXPECT_EQ(Send(), DownloadOutcome::Success);
  // Seven files of 100 samples: 150 coded bytes each, one WriteLess; then the table and its checksum.
  EXPECT_THAT(m_board.Codes(), ElementsAre(41, 10, 42, 21, 21, 21, 21, 21, 21, 21, 21, 30, 0));
  // The frame appears with the words of the phase that it appears in.
  EXPECT_THAT(m_view.log, ElementsAre("info:Erasing flash memory ...", "percent:0 %", "button:Cancel", "frame",
                                      "percent:0 %", "info:Coding data...", "percent:", "info:Downloading...",
                                      "percent:0 %", "info:SUCCESS !", "percent:", "hide timer", "button:Close"));
  EXPECT_THAT(m_view.boardHolds, HasSubstr("new sounds"));
  EXPECT_FALSE(m_download.IsRunning());
  EXPECT_EQ(m_download.Information(), "SUCCESS !");
  EXPECT_EQ(m_download.BytesWritten(), 7 * 150 + 48);
}

TEST_F(DownloadTest, WritesFilesInFlashOrderAtTheirAddresses) {
  m_set.Add(SlotKind::Motion, 200);
  ASSERT_EQ(Send(), DownloadOutcome::Success);
  const auto writes = m_board.ReportsOf(21);
  // Boot, power on, power off, idle, motion 1 and 2, impact, lock-up: each 150 bytes (the second motion file 300), each
  // one byte behind the end of the one before; then the table.
  const int addresses[] = {512, 663, 814, 965, 1116, 1267, 1568, 1719, 12};
  const int counts[] = {150, 150, 150, 150, 150, 300, 150, 150, 54};
  ASSERT_EQ(writes.size(), std::size(addresses));
  for (std::size_t i = 0; i < writes.size(); ++i) {
    EXPECT_EQ(AnsweringBoard::Number24(writes[i], 1), addresses[i]);
    EXPECT_EQ(AnsweringBoard::Number24(writes[i], 4), counts[i]);
  }
  // The checksum question leaves the table's two checksum bytes out.
  const auto check = m_board.ReportsOf(30).front();
  EXPECT_EQ(AnsweringBoard::Number24(check, 1), 12);
  EXPECT_EQ(AnsweringBoard::Number24(check, 4), 52);
}

TEST_F(DownloadTest, ALongFileGoesInWholeBlocksAndARest) {
  m_set.Add(SlotKind::Boot, 1366);  // 2,049 coded bytes
  ASSERT_EQ(Send(), DownloadOutcome::Success);
  const auto blocks = m_board.ReportsOf(20);
  ASSERT_EQ(blocks.size(), 2u);
  EXPECT_EQ(AnsweringBoard::Number24(blocks[0], 1), 512);
  EXPECT_EQ(AnsweringBoard::Number24(blocks[1], 1), 1536);
  const auto rest = m_board.ReportsOf(21).front();
  EXPECT_EQ(AnsweringBoard::Number24(rest, 1), 2560);
  EXPECT_EQ(AnsweringBoard::Number24(rest, 4), 1);
}

TEST_F(DownloadTest, ARestTooLongForOneReportGoesAsTwo) {
  m_set.Add(SlotKind::Boot, 682);  // 1,023 coded bytes
  ASSERT_EQ(Send(), DownloadOutcome::Success);
  const auto rests = m_board.ReportsOf(21);
  EXPECT_EQ(AnsweringBoard::Number24(rests[0], 4), 1021);
  EXPECT_EQ(AnsweringBoard::Number24(rests[1], 1), 512 + 1021);
  EXPECT_EQ(AnsweringBoard::Number24(rests[1], 4), 2);
}

TEST_F(DownloadTest, PercentGrowsToAHundred) {
  m_set.Add(SlotKind::Idle, 48000);
  ASSERT_EQ(Send(), DownloadOutcome::Success);
  // From the second 0 % (the erase showed the first ones) to the end nothing falls.
  int last = 0;
  bool writing = false;
  for (std::size_t i = 0; i + 1 < m_view.percents.size(); ++i) {
    if (!m_view.percents[i]) continue;
    if (m_view.percents[i] == 0) writing = true;
    if (writing && m_view.percents[i] == 0) last = 0;
    EXPECT_GE(*m_view.percents[i], last);
    last = *m_view.percents[i];
  }
  EXPECT_EQ(last, 100);
}

// --- What refuses a run ---

struct MissingCase {
  SlotKind kind;
  const char* message;
};

TEST_F(DownloadTest, NamesTheMissingPieceAndSendsNothing) {
  const MissingCase cases[] = {
      {SlotKind::Boot, "Boot file is missing"},
      {SlotKind::PwrOn, "Power On file is missing"},
      {SlotKind::PwrOff, "Power Off file is missing"},
      {SlotKind::Idle, "Idle file is missing"},
      {SlotKind::Motion, "At least one motion file is required"},
      {SlotKind::Impact, "At least one impact file is required"},
      {SlotKind::Lockup, "At least one locku-up file is required"},
  };
  for (const MissingCase& c : cases) {
    support::CompleteSet set;
    set.configuration.RemoveFile(1, c.kind);
    Download download(set.configuration, m_view, m_kept, m_clock, {});
    EXPECT_EQ(download.Send({m_board.tls, kSerial, 4 << 20, true}), DownloadOutcome::Incomplete);
    EXPECT_EQ(m_view.message, c.message);
    EXPECT_EQ(download.Information(), c.message);
  }
  EXPECT_EQ(m_board.agent.writesTried, 0);
  EXPECT_FALSE(m_view.frameVisible);
}

TEST_F(DownloadTest, RefusesASetLargerThanTheBoard) {
  m_set.configuration.SetMaxNrOfSamples(700);
  EXPECT_EQ(Send(), DownloadOutcome::Success) << "exactly full still fits";
  m_set.configuration.SetMaxNrOfSamples(699);
  EXPECT_EQ(Send(), DownloadOutcome::TooLarge);
  EXPECT_THAT(m_view.message, HasSubstr("do not fit"));
}

TEST_F(DownloadTest, RefusesALayoutBeyondTheFlash) {
  // The last stream starts at 512 + 6 * 151 and has 150 bytes.
  EXPECT_EQ(Send(512 + 6 * 151 + 150), DownloadOutcome::Success);
  EXPECT_EQ(Send(512 + 6 * 151 + 149), DownloadOutcome::TooLarge);
}

TEST_F(DownloadTest, NamesEveryFileThatCannotBeSentAndSendsNothing) {
  const auto boot = m_set.configuration.FileAt(SlotKind::Boot).FileNameAndPath();
  const auto idle = m_set.configuration.FileAt(SlotKind::Idle).FileNameAndPath();
  std::filesystem::remove(boot);
  support::WriteSoundFile(idle, support::SomeSamples(99));
  m_set.configuration.SetVolume(SlotKind::Motion, 1, 200);
  EXPECT_EQ(Send(), DownloadOutcome::Incomplete);
  EXPECT_THAT(m_view.message,
              AllOf(HasSubstr(boot.filename().string()), HasSubstr(idle.filename().string()), HasSubstr("motion")));
  EXPECT_EQ(m_board.agent.writesTried, 0);
  EXPECT_FALSE(m_view.frameVisible);
}

// --- Detection parameters ---

TEST_F(DownloadTest, PutsTheDetectionParametersBack) {
  EXPECT_EQ(Send(), DownloadOutcome::Success);
  EXPECT_EQ(m_board.accelerometer, kBefore);
  EXPECT_THAT(m_kept.kept, IsEmpty());
}

TEST_F(DownloadTest, LeavesABoardAloneWhoseParametersCannotBeRead) {
  m_board.silentFor = 41;
  EXPECT_EQ(Send(), DownloadOutcome::ConnectionLost);
  EXPECT_EQ(m_view.information, "Connection lost");
  EXPECT_EQ(m_view.button, "Close");
  EXPECT_THAT(m_board.Codes(), ElementsAre(41));
  EXPECT_THAT(m_view.boardHolds, HasSubstr("not changed"));
}

TEST_F(DownloadTest, LeavesABoardAloneThatDidNotSayWhatItIs) {
  EXPECT_EQ(Send(4 << 20, false), DownloadOutcome::ConnectionLost);
  EXPECT_EQ(m_view.information, "Connection lost");
  EXPECT_EQ(m_board.agent.writesTried, 0);
  // A frame that has no phase to show appears with how the run ended.
  EXPECT_THAT(m_view.log, ElementsAre("info:Connection lost", "percent:", "button:Close", "frame"));
  EXPECT_EQ(m_view.boardHolds,
            "The board was not changed: it did not say which one it is. Unplug it, plug it in again and repeat the "
            "download.");
}

TEST_F(DownloadTest, SaysWhatIsWrongWithABoardThatToldHalfOfItsSerialNumber) {
  EXPECT_EQ(m_download.Send({m_board.tls, "4B53", 4 << 20, false}), DownloadOutcome::ConnectionLost);
  EXPECT_EQ(m_view.information, "The board told only half of its serial number.");
  EXPECT_THAT(m_view.boardHolds, HasSubstr("plug it in again"));
  EXPECT_EQ(m_board.agent.writesTried, 0);
}

TEST_F(DownloadTest, LeavesABoardAloneWhoseParametersCannotBeRemembered) {
  m_kept.problem = "\"kept.txt\" could not be written: the disk is full";
  EXPECT_EQ(Send(), DownloadOutcome::Incomplete);
  EXPECT_EQ(m_view.information, m_kept.problem);
  EXPECT_THAT(m_board.Codes(), ElementsAre(41));
}

TEST_F(DownloadTest, RemembersParametersThatCouldNotBeWrittenBackUntilTheNextDownload) {
  m_board.silentFor = 42;
  m_board.bend = [this](const AnsweringBoard::Report& report) {
    if (report[0] == 42) m_board.accelerometer = kErased;
  };
  EXPECT_EQ(Send(), DownloadOutcome::ConnectionLost);
  EXPECT_EQ(m_kept.Find(kSerial), kBefore);
  EXPECT_THAT(m_view.boardHolds, HasSubstr("parameters are kept"));
  EXPECT_THAT(m_board.Codes(), ElementsAre(41, 10, 42));

  m_board.silentFor = -1;
  m_board.bend = nullptr;
  EXPECT_EQ(Send(), DownloadOutcome::Success);
  EXPECT_EQ(m_board.accelerometer, kBefore);
  EXPECT_THAT(m_kept.kept, IsEmpty());
}

TEST_F(DownloadTest, AnotherBoardsParametersStayRemembered) {
  m_kept.kept["other"] = {9, 9, 9, 9, 9, 9};
  EXPECT_EQ(Send(), DownloadOutcome::Success);
  EXPECT_EQ(m_board.accelerometer, kBefore);
  EXPECT_EQ(m_kept.kept.size(), 1u);
}

// --- The erase ---

TEST_F(DownloadTest, AnEraseDoneOnThe20thPollStillCounts) {
  m_board.eraseFailures = 19;
  EXPECT_EQ(Send(), DownloadOutcome::Success);
}

TEST_F(DownloadTest, AnEraseNotDoneAfter20PollsIsALostConnection) {
  m_board.eraseFailures = 20;
  EXPECT_EQ(Send(), DownloadOutcome::ConnectionLost);
  EXPECT_THAT(m_board.Codes(), ElementsAre(41, 10));
  EXPECT_EQ(m_board.agent.readsTried, 3 + 20);
  EXPECT_EQ(m_view.information, "Connection lost");
  EXPECT_THAT(m_view.boardHolds, HasSubstr("no complete sound set"));
  EXPECT_EQ(m_kept.Find(kSerial), kBefore);
}

TEST_F(DownloadTest, AnEraseThatCannotBeSentIsALostConnection) {
  m_board.agent.failWrites = {2};
  EXPECT_EQ(Send(), DownloadOutcome::ConnectionLost);
  EXPECT_THAT(m_board.Codes(), ElementsAre(41));
}

TEST_F(DownloadTest, ErasePercentIsTheShareOf30SecondsInWholeSeconds) {
  m_board.eraseFailures = 19;
  m_board.agent.whileReading = [this] { m_clock.Advance(std::chrono::milliseconds(2900)); };
  ASSERT_EQ(Send(), DownloadOutcome::Success);
  // Three reads of the parameters come before the erase; then each poll lasts 2.9 s: 0, 2, 5, 8, 11, 14, ... whole
  // seconds.
  const std::vector<std::optional<int>> first(m_view.percents.begin(), m_view.percents.begin() + 7);
  EXPECT_THAT(first, ElementsAre(0, 0, 7, 17, 27, 37, 47));
  EXPECT_THAT(std::vector<std::optional<int>>(m_view.percents.begin() + 12, m_view.percents.begin() + 21),
              ::testing::Each(std::optional<int>(100)))
      << "31 s and more are 100 %";
}

TEST_F(DownloadTest, TellsWhetherTheBoardIsStillErasing) {
  EXPECT_FALSE(m_download.LeftErasing());
  CancelAtReport(10, 1);
  ASSERT_EQ(Send(), DownloadOutcome::Cancelled);
  EXPECT_TRUE(m_download.LeftErasing());
  m_board.bend = nullptr;
  m_board.agent.answers.clear();
  ASSERT_EQ(Send(), DownloadOutcome::Success);
  EXPECT_FALSE(m_download.LeftErasing());
  m_board.eraseFailures = 20;
  ASSERT_EQ(Send(), DownloadOutcome::ConnectionLost);
  EXPECT_TRUE(m_download.LeftErasing());
  m_board.eraseFailures = 0;
  m_board.agent.answers.clear();
  CancelAt("Coding data...");
  ASSERT_EQ(Send(), DownloadOutcome::Cancelled);
  EXPECT_FALSE(m_download.LeftErasing()) << "the erase was over";
}

TEST_F(DownloadTest, AnEraseThatWasNotSentLeavesNothingToWaitFor) {
  m_board.agent.failWrites = {2};
  ASSERT_EQ(Send(), DownloadOutcome::ConnectionLost);
  EXPECT_FALSE(m_download.LeftErasing());
}

TEST_F(DownloadTest, EveryQuestionForTheEndOfTheEraseGivesTheWindowItsTurn) {
  m_board.eraseFailures = 5;
  int turns = 0;
  m_pump = [&] {
    if (!m_board.agent.written.empty() && m_board.agent.written.back()[0] == 10) ++turns;
  };
  ASSERT_EQ(Send(), DownloadOutcome::Success);
  // As many questions as reads: the board itself gives no turn.
  EXPECT_EQ(turns, 6);
}

TEST_F(DownloadTest, CheckingTheFilesBeforeTheRunGivesTheWindowItsTurnAndCanBeCancelled) {
  m_pump = [this] {
    if (m_board.agent.writesTried == 0) m_download.Cancel();
  };
  EXPECT_EQ(Send(), DownloadOutcome::Cancelled);
  EXPECT_EQ(m_board.agent.writesTried, 0);
  EXPECT_THAT(m_view.boardHolds, HasSubstr("not changed"));
}

// --- Failures under way ---

TEST_F(DownloadTest, AnyBlockThatFailsIsALostConnection) {
  // Reports 4 to 10 are the seven files.
  for (int report = 4; report <= 10; ++report) {
    AnsweringBoard board;
    board.agent.failWrites = {report};
    EXPECT_EQ(m_download.Send({board.tls, kSerial, 4 << 20, true}), DownloadOutcome::ConnectionLost);
    EXPECT_EQ(m_view.information, "Connection lost");
    EXPECT_THAT(board.ReportsOf(0), IsEmpty());
    EXPECT_EQ(static_cast<int>(board.agent.written.size()), report - 1) << "nothing is sent behind the failure";
  }
}

TEST_F(DownloadTest, AWrongSumIsALostConnection) {
  m_board.bend = [this](const AnsweringBoard::Report& report) {
    if (report[0] == 21) m_board.agent.answers.back() = support::ScriptedAgent::Answer{0, 0};
  };
  EXPECT_EQ(Send(), DownloadOutcome::ConnectionLost);
}

TEST_F(DownloadTest, ATableThatCannotBeVerifiedIsAMemoryCheckErrorAndRestartsNothing) {
  const struct {
    int silentFor;
    bool wrongSum;
  } cases[] = {{30, false}, {-1, true}};
  for (const auto& c : cases) {
    AnsweringBoard board;
    board.silentFor = c.silentFor;
    if (c.wrongSum)
      board.bend = [&board](const AnsweringBoard::Report& report) {
        if (report[0] == 30) (*board.agent.answers.back())[1] ^= 1;
      };
    EXPECT_EQ(m_download.Send({board.tls, kSerial, 4 << 20, true}), DownloadOutcome::MemoryCheckError);
    EXPECT_EQ(m_view.information, "Memory check error");
    EXPECT_EQ(m_view.button, "Close");
    EXPECT_THAT(board.ReportsOf(0), IsEmpty());
    EXPECT_THAT(m_view.boardHolds, HasSubstr("could not be verified"));
  }
}

TEST_F(DownloadTest, ATableThatCannotBeWrittenIsAMemoryCheckErrorToo) {
  m_board.agent.failWrites = {11};
  EXPECT_EQ(Send(), DownloadOutcome::MemoryCheckError);
  EXPECT_THAT(m_board.ReportsOf(30), IsEmpty());
}

TEST_F(DownloadTest, AVerifiedSetIsASuccessAlsoWhenTheRestartFails) {
  m_board.agent.failWrites = {13};
  EXPECT_EQ(Send(), DownloadOutcome::Success);
  EXPECT_THAT(m_view.boardHolds, HasSubstr("Unplug it and plug it in again"));
}

TEST_F(DownloadTest, AFileThatChangesAfterTheEraseEndsTheRunWithItsName) {
  const auto idle = m_set.configuration.FileAt(SlotKind::Idle).FileNameAndPath();
  m_view.onInformation = [&](const std::string& information) {
    if (information == "Coding data...") support::WriteSoundFile(idle, support::SomeSamples(500));
  };
  EXPECT_EQ(Send(), DownloadOutcome::Incomplete);
  EXPECT_THAT(m_view.information, HasSubstr(idle.filename().string()));
  EXPECT_EQ(m_view.button, "Close");
  EXPECT_THAT(m_board.Codes(), ElementsAre(41, 10, 42));
  EXPECT_THAT(m_view.boardHolds, HasSubstr("no complete sound set"));
}

TEST_F(DownloadTest, AFileThatBecomesTooLoudAfterTheEraseEndsTheRunToo) {
  m_view.onInformation = [&](const std::string& information) {
    if (information == "Coding data...") m_set.configuration.SetVolume(SlotKind::Idle, 1, 1000);
  };
  EXPECT_EQ(Send(), DownloadOutcome::Incomplete);
  EXPECT_THAT(m_view.information, HasSubstr("idle"));
}

TEST_F(DownloadTest, AnErrorOfTheViewEndsTheRunInsteadOfTheProgram) {
  m_view.onInformation = [](const std::string& information) {
    if (information == "Downloading...") throw std::runtime_error("the window is gone");
  };
  EXPECT_EQ(Send(), DownloadOutcome::Incomplete);
  EXPECT_EQ(m_view.information, "the window is gone");
  EXPECT_FALSE(m_download.IsRunning());
}

}  // namespace
}  // namespace kestrin::core::sound
