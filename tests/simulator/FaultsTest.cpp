// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>

#include "SimulatorSupport.h"
#include "simulator/SimulatedAgent.h"
#include "support/FakeClock.h"

namespace kestrin::simulator {
namespace {

using support::OpenAndSelect;
using support::ReadAnswer;
using support::WriteCommand;
using namespace std::chrono_literals;
using ::testing::ElementsAre;

class FaultsTest : public ::testing::Test {
 protected:
  std::unique_ptr<SimulatedAgent> Make(const std::string& options) {
    auto agent = std::make_unique<SimulatedAgent>(*BoardOptions::Parse(options), m_clock);
    agent->SetEvents(&m_recorder);
    OpenAndSelect(*agent);
    m_recorder.events.clear();
    return agent;
  }

  support::FakeClock m_clock;
  support::EventRecorder m_recorder;
};

TEST_F(FaultsTest, AFailedWriteDoesNotReachTheBoard) {
  const auto agent = Make("fault=write:2");
  EXPECT_TRUE(WriteCommand(*agent, {0}));
  EXPECT_FALSE(WriteCommand(*agent, {0}));
  EXPECT_EQ(agent->Board().State().resets, 1U);
  EXPECT_TRUE(WriteCommand(*agent, {0}));
  EXPECT_EQ(agent->Board().State().resets, 2U);
}

TEST_F(FaultsTest, AFailedReadFailsAtOnceAndItsAnswerComesLate) {
  const auto agent = Make("fault=read:2");
  ASSERT_TRUE(WriteCommand(*agent, {41}));
  EXPECT_EQ(ReadAnswer(*agent), (VirtualBoard::Answer{180, 2}));
  EXPECT_FALSE(ReadAnswer(*agent));
  EXPECT_EQ(m_clock.Now(), 0s);
  EXPECT_EQ(ReadAnswer(*agent), (VirtualBoard::Answer{10, 50}));
}

TEST_F(FaultsTest, ALateAnswerIsNotTakenForTheNextCommands) {
  const auto agent = Make("fault=read:1");
  ASSERT_TRUE(WriteCommand(*agent, {1}));
  EXPECT_FALSE(ReadAnswer(*agent));
  ASSERT_TRUE(WriteCommand(*agent, {41}));
  EXPECT_EQ(ReadAnswer(*agent), (VirtualBoard::Answer{180, 2}));
}

TEST_F(FaultsTest, AReadThatFailsDuringAnEraseDoesNotLoseItsCompletion) {
  const auto agent = Make("fault=read:1,erase=1");
  ASSERT_TRUE(WriteCommand(*agent, {10}));
  EXPECT_FALSE(ReadAnswer(*agent));
  EXPECT_EQ(m_clock.Now(), 0s);
  EXPECT_EQ(ReadAnswer(*agent), (VirtualBoard::Answer{10, 10}));
}

TEST_F(FaultsTest, UnplugCountsWrittenAndReadReportsTogether) {
  // Reports 1 and 2 are a write and a read; 3 is the next write, 4 its read.
  const auto writing = Make("fault=unplug:3");
  EXPECT_TRUE(WriteCommand(*writing, {0}));
  EXPECT_TRUE(WriteCommand(*writing, {3}));
  EXPECT_FALSE(ReadAnswer(*writing));
  EXPECT_FALSE(WriteCommand(*writing, {0}));
  EXPECT_FALSE(writing->SearchAndOpen());
  EXPECT_THAT(m_recorder.events, ::testing::IsEmpty());
  writing->Refresh();
  EXPECT_THAT(m_recorder.events, ElementsAre("closed 1 sim", "removed 1 sim"));
  EXPECT_FALSE(writing->SearchAndOpen());

  const auto reading = Make("fault=unplug:3");
  EXPECT_TRUE(WriteCommand(*reading, {0}));
  EXPECT_TRUE(WriteCommand(*reading, {0}));
  EXPECT_FALSE(WriteCommand(*reading, {0}));
  EXPECT_EQ(reading->Board().State().resets, 2U) << "the report at which the board goes does not reach it";
  EXPECT_EQ(m_clock.Now(), 0s);
}

TEST_F(FaultsTest, ABoardThatAFaultUnpluggedCanBePluggedInAgain) {
  const auto agent = Make("fault=unplug:1");
  EXPECT_FALSE(WriteCommand(*agent, {3}));
  EXPECT_FALSE(agent->SearchAndOpen());
  agent->Plug();
  agent->Refresh();
  OpenAndSelect(*agent);
  EXPECT_TRUE(WriteCommand(*agent, {3}));
  EXPECT_EQ(ReadAnswer(*agent), (VirtualBoard::Answer{0, 0}));
}

/// How many bits of the flash from `address` on differ from `expected`.
int DifferentBits(const VirtualBoard& board, std::size_t address, std::size_t count, std::uint8_t expected) {
  int bits = 0;
  for (const std::uint8_t byte : board.Flash().subspan(address, count))
    bits += std::popcount(static_cast<unsigned>(byte ^ expected));
  return bits;
}

TEST_F(FaultsTest, AFlippedBitOfABlockShowsInTheAnswer) {
  const auto agent = Make("fault=flip:2");
  // The data are 1,024 bytes 0xA5: 1024 * 165 = 168960 = 2 * 65536 + 0x9400.
  ASSERT_TRUE(WriteCommand(*agent, {20, 0, 0, 0}));
  EXPECT_EQ(ReadAnswer(*agent), (VirtualBoard::Answer{0x94, 0x00}));
  EXPECT_EQ(DifferentBits(agent->Board(), 0, 1024, 0xA5), 0);

  ASSERT_TRUE(WriteCommand(*agent, {20, 0, 4, 0}));
  const auto answer = ReadAnswer(*agent);
  ASSERT_TRUE(answer);
  EXPECT_NE(*answer, (VirtualBoard::Answer{0x94, 0x00}));
  EXPECT_EQ(DifferentBits(agent->Board(), 1024, 1024, 0xA5), 1);

  // The same report once more, as the host still holds it.
  agent->SetCurrentRptNum(0);
  ASSERT_TRUE(agent->WriteReport());
  EXPECT_EQ(ReadAnswer(*agent), (VirtualBoard::Answer{0x94, 0x00})) << "the host's own copy is not damaged";
}

TEST_F(FaultsTest, AFlippedBitLiesWithinTheDataOfARest) {
  for (const int count : {1, 2, 3, 100}) {
    const auto agent = Make("fault=flip:1");
    ASSERT_TRUE(WriteCommand(*agent, {21, 0, 0, 0, 0, 0, count}));
    ASSERT_TRUE(ReadAnswer(*agent));
    EXPECT_EQ(DifferentBits(agent->Board(), 0, static_cast<std::size_t>(count), 0xA5), 1) << count;
    EXPECT_EQ(agent->Board().Flash()[static_cast<std::size_t>(count)], 0xFF);
  }
}

TEST_F(FaultsTest, AFlipLeavesReportsWithoutFlashDataAlone) {
  const auto agent = Make("fault=flip:1,fault=flip:2");
  ASSERT_TRUE(WriteCommand(*agent, {42, 1, 2, 3, 4, 5, 6}));
  EXPECT_THAT(agent->Board().State().accelerometer, ElementsAre(1, 2, 3, 4, 5, 6));
  ASSERT_TRUE(WriteCommand(*agent, {21, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(ReadAnswer(*agent), (VirtualBoard::Answer{0, 0}));
  EXPECT_EQ(agent->Board().Flash()[0], 0xFF);
}

TEST_F(FaultsTest, SeveralFaultsWorkSideBySide) {
  const auto agent = Make("fault=write:1,fault=read:1,fault=write:3");
  EXPECT_FALSE(WriteCommand(*agent, {3}));
  EXPECT_TRUE(WriteCommand(*agent, {3}));
  EXPECT_FALSE(ReadAnswer(*agent));
  EXPECT_FALSE(WriteCommand(*agent, {3}));
  EXPECT_TRUE(WriteCommand(*agent, {3}));
  EXPECT_TRUE(ReadAnswer(*agent));
}

}  // namespace
}  // namespace kestrin::simulator
