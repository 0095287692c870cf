// SPDX-License-Identifier: MIT
#include "DownloadFixture.h"

namespace kestrin::core::sound {
namespace {

using support::AnsweringBoard;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(DownloadTest, CancelDuringTheEraseStopsBeforeAnyWrite) {
  CancelAtReport(10, 1);
  EXPECT_EQ(Send(), DownloadOutcome::Cancelled);
  EXPECT_THAT(m_board.Codes(), ElementsAre(41, 10));
  ExpectCancelled();
  EXPECT_EQ(m_kept.Find(kSerial), kBefore);
}

TEST_F(DownloadTest, CancelWhileTheEraseAnswersStopsBeforeAnyWrite) {
  m_board.agent.whileReading = [this] {
    if (m_board.agent.written.back()[0] == 10) m_download.Cancel();
  };
  EXPECT_EQ(Send(), DownloadOutcome::Cancelled);
  EXPECT_THAT(m_board.Codes(), ElementsAre(41, 10));
  ExpectCancelled();
}

TEST_F(DownloadTest, CancelBeforeTheEraseLeavesTheBoardAlone) {
  CancelAtReport(41, 1);
  EXPECT_EQ(Send(), DownloadOutcome::Cancelled);
  EXPECT_THAT(m_board.Codes(), ElementsAre(41));
  ExpectCancelled();
  EXPECT_THAT(m_view.boardHolds, HasSubstr("not changed"));
}

TEST_F(DownloadTest, CancelWhileCodingStopsBeforeAnyWrite) {
  CancelAt("Coding data...");
  EXPECT_EQ(Send(), DownloadOutcome::Cancelled);
  EXPECT_THAT(m_board.Codes(), ElementsAre(41, 10, 42));
  ExpectCancelled();
}

TEST_F(DownloadTest, CancelDuringTheWritesLeavesTheTableUnwritten) {
  m_set.Add(SlotKind::Boot, 48000);  // 72,000 coded bytes: 70 whole blocks
  CancelAtReport(20, 5);
  EXPECT_EQ(Send(), DownloadOutcome::Cancelled);
  EXPECT_EQ(m_board.ReportsOf(20).size(), 5u);
  EXPECT_THAT(m_board.ReportsOf(21), IsEmpty());
  ExpectCancelled();
  EXPECT_THAT(m_view.boardHolds, HasSubstr("no complete sound set"));
}

TEST_F(DownloadTest, CancelAtTheLastBlockLeavesTheTableUnwritten) {
  CancelAtReport(21, 7);
  EXPECT_EQ(Send(), DownloadOutcome::Cancelled);
  EXPECT_EQ(m_board.ReportsOf(21).size(), 7u);
  EXPECT_THAT(m_board.ReportsOf(30), IsEmpty());
  ExpectCancelled();
}

TEST_F(DownloadTest, CancelDuringTheTableIsNeverShownAsDone) {
  CancelAtReport(30, 1);
  EXPECT_EQ(Send(), DownloadOutcome::Cancelled);
  ExpectCancelled();
  EXPECT_THAT(m_view.boardHolds, HasSubstr("new sounds"));
}

TEST_F(DownloadTest, CancelStaysCancelledWhateverGoesWrongAfterwards) {
  m_board.bend = [this](const AnsweringBoard::Report& report) {
    if (report[0] != 21) return;
    m_download.Cancel();
    m_board.agent.answers.clear();
  };
  EXPECT_EQ(Send(), DownloadOutcome::Cancelled);
  ExpectCancelled();
}

TEST_F(DownloadTest, TheButtonAsksBeforeItCancels) {
  m_view.onInformation = [this](const std::string& information) {
    if (information == "Downloading...") m_download.CancelButton();
  };
  EXPECT_EQ(Send(), DownloadOutcome::Success) << "OK resumes";
  EXPECT_EQ(m_view.question,
            "Are you sure you want to cancel downloading ? \n"
            "This might result in unsable behaviour !\n"
            "Press OK to resume downloading or Cancel to abort");
  m_view.abort = true;
  EXPECT_EQ(Send(), DownloadOutcome::Cancelled);
}

TEST_F(DownloadTest, AnEndedRunsButtonHidesTheFrame) {
  ASSERT_EQ(Send(), DownloadOutcome::Success);
  m_download.CancelButton();
  EXPECT_FALSE(m_view.frameVisible);
  EXPECT_EQ(m_view.question, "");
}

TEST_F(DownloadTest, WithoutARunCancelDoesNothing) {
  m_download.Cancel();
  EXPECT_THAT(m_view.log, IsEmpty());
}

TEST_F(DownloadTest, EveryEndWorksAgainAfterwards) {
  m_board.silentFor = 30;
  ASSERT_EQ(Send(), DownloadOutcome::MemoryCheckError);
  m_board.silentFor = -1;
  CancelAtReport(21, 3);
  ASSERT_EQ(Send(), DownloadOutcome::Cancelled);
  m_board.bend = nullptr;
  EXPECT_EQ(Send(), DownloadOutcome::Success);
  EXPECT_EQ(m_board.accelerometer, kBefore);
}

}  // namespace
}  // namespace kestrin::core::sound
