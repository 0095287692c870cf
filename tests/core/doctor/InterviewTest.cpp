// SPDX-License-Identifier: MIT
#include "core/doctor/Interview.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "simulator/VirtualBoard.h"
#include "support/FakeClock.h"
#include "support/ScriptedAgent.h"

namespace kestrin::core::doctor {
namespace {

using support::ScriptedAgent;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Codes of commands that change something in a board.
constexpr int kChanging[] = {0, 7, 10, 20, 21, 42, 51, 53, 54, 61};

/// The simulated firmware behind a scripted agent. Each round trip takes a millisecond more than the one before.
class InterviewTest : public testing::Test {
 protected:
  void Connect(simulator::BoardState state) {
    board = simulator::VirtualBoard(state);
    agent.Open(ScriptedAgent::BoardInterface(1));
    ASSERT_EQ(tls.BindVars(agent), 0);
    agent.onWrite = [this](const std::vector<std::uint8_t>& report) {
      agent.answers.clear();
      codes.push_back(report[0]);
      if (silentFrom == static_cast<int>(codes.size())) isSilent = true;
      if (isSilent) return;
      clock.Advance(std::chrono::milliseconds(codes.size()));
      board.Receive(report, {});
      while (const auto answer = board.NextAnswer({})) agent.answers.emplace_back(*answer);
      if (bend) bend(report[0]);
    };
  }
  [[nodiscard]] static simulator::BoardState SoundBoard() {
    simulator::BoardState state;
    state.id = 4133;
    return state;
  }
  [[nodiscard]] static simulator::BoardState LedDriver() {
    simulator::BoardState state;
    state.id = 5;
    return state;
  }
  [[nodiscard]] Answers Ask() {
    return Interview(tls, clock, [this] { return asked++ < most; });
  }
  [[nodiscard]] static std::vector<std::string> CommandsOf(const Answers& answers) {
    std::vector<std::string> commands;
    for (const Exchange& exchange : answers.exchanges) commands.push_back(exchange.command);
    return commands;
  }

  simulator::VirtualBoard board;
  ScriptedAgent agent;
  device::TLS tls;
  support::FakeClock clock;
  std::vector<int> codes;
  /// The number of the question, from 1, from which on the board keeps silent; 0 for never.
  int silentFrom = 0;
  bool isSilent = false;
  std::function<void(int)> bend;
  int asked = 0;
  int most = 1000;
};

TEST_F(InterviewTest, AsksASoundBoardWhatChangesNothing) {
  Connect(SoundBoard());
  const Answers answers = Ask();
  EXPECT_TRUE(answers.written);
  EXPECT_TRUE(answers.answered);
  EXPECT_EQ(answers.id, 4133);
  EXPECT_EQ(answers.serialNumber, "4B535401");
  EXPECT_THAT(CommandsOf(answers), ElementsAre("GetID", "GetSN", "CheckCRC", "GetACC", "GetAccParam"));
  for (const Exchange& exchange : answers.exchanges) EXPECT_TRUE(exchange.IsAsExpected()) << exchange.command;
  EXPECT_THAT(answers.exchanges[0].answer, ElementsAre(0x10, 0x25));
  EXPECT_THAT(answers.exchanges[1].answer, ElementsAre(0x4B, 0x53, 0x54, 0x01));
  // 46 erased bytes are 46 * 255 = 11,730.
  EXPECT_THAT(answers.exchanges[2].answer, ElementsAre(0x2D, 0xD2));
  EXPECT_THAT(answers.exchanges[4].answer, ElementsAre(180, 2, 10, 50, 125, 13));
  for (const int code : kChanging) EXPECT_THAT(codes, Each(testing::Ne(code)));
  EXPECT_EQ(board.State(), SoundBoard());
}

TEST_F(InterviewTest, AsksALedDriverForItsLeds) {
  Connect(LedDriver());
  const Answers answers = Ask();
  EXPECT_THAT(CommandsOf(answers), ElementsAre("GetID", "GetSN", "GetLEDParam", "GetLEDPulses", "GetLEDConfig"));
  // Nine, nine and three answers of two bytes.
  EXPECT_THAT(answers.exchanges[2].answer, SizeIs(18));
  EXPECT_THAT(answers.exchanges[3].answer, SizeIs(18));
  EXPECT_THAT(answers.exchanges[4].answer, ElementsAre(0, 1, 0, 37, 0, 100));
  for (const int code : kChanging) EXPECT_THAT(codes, Each(testing::Ne(code)));
  EXPECT_EQ(board.State(), LedDriver());
}

TEST_F(InterviewTest, TimesTwentyRoundTrips) {
  Connect(SoundBoard());
  const Answers answers = Ask();
  ASSERT_THAT(answers.roundTrips, SizeIs(20));
  // The first question took 1 ms, so the round trips took 2 to 21.
  for (int i = 0; i < 20; ++i)
    EXPECT_EQ(answers.roundTrips[static_cast<std::size_t>(i)], std::chrono::milliseconds(i + 2));
  EXPECT_EQ(answers.exchanges[0].took, std::chrono::milliseconds(1));
}

TEST_F(InterviewTest, AsksNothingMoreOfABoardThatTakesNothing) {
  Connect(SoundBoard());
  agent.failWrites = {1};
  const Answers answers = Ask();
  EXPECT_FALSE(answers.written);
  EXPECT_FALSE(answers.answered);
  EXPECT_EQ(agent.writesTried, 1);
  EXPECT_EQ(agent.readsTried, 0);
  EXPECT_FALSE(answers.id);
}

TEST_F(InterviewTest, AsksNothingMoreOfABoardThatIsSilent) {
  Connect(SoundBoard());
  silentFrom = 1;
  const Answers answers = Ask();
  EXPECT_TRUE(answers.written);
  EXPECT_FALSE(answers.answered);
  EXPECT_EQ(agent.writesTried, 1);
  EXPECT_EQ(agent.readsTried, 1);
  EXPECT_THAT(answers.roundTrips, IsEmpty());
}

TEST_F(InterviewTest, StopsAtTheFirstSilenceOnTheWay) {
  Connect(SoundBoard());
  silentFrom = 12;
  const Answers answers = Ask();
  EXPECT_THAT(codes, SizeIs(12));
  EXPECT_THAT(answers.roundTrips, SizeIs(10));
  EXPECT_THAT(answers.exchanges, SizeIs(1));
}

TEST_F(InterviewTest, StopsAtACommandThatIsNotAnswered) {
  Connect(SoundBoard());
  silentFrom = 23;
  const Answers answers = Ask();
  EXPECT_THAT(CommandsOf(answers), ElementsAre("GetID", "GetSN", "CheckCRC"));
  EXPECT_THAT(answers.exchanges.back().answer, IsEmpty());
  EXPECT_EQ(answers.serialNumber, "4B535401");
}

TEST_F(InterviewTest, GoesOnBehindAnAnswerThatIsTooShort) {
  Connect(SoundBoard());
  bend = [this](int code) {
    if (code == 1 || code == 41) agent.answers.pop_back();
  };
  const Answers answers = Ask();
  EXPECT_EQ(answers.serialNumber, "");
  EXPECT_THAT(answers.exchanges[1].answer, ElementsAre(0x4B, 0x53));
  EXPECT_FALSE(answers.exchanges[1].IsAsExpected());
  EXPECT_THAT(answers.exchanges.back().answer, ElementsAre(180, 2, 10, 50));
  EXPECT_EQ(answers.exchanges.back().expected, 6U);
}

TEST_F(InterviewTest, StopsWhenItIsTold) {
  Connect(SoundBoard());
  most = 0;
  EXPECT_FALSE(Ask().written);
  EXPECT_THAT(codes, IsEmpty());
  most = 5;
  asked = 0;
  EXPECT_THAT(Ask().roundTrips, SizeIs(4));
  EXPECT_THAT(codes, SizeIs(5));
  most = 22;
  asked = 0;
  codes.clear();
  EXPECT_THAT(CommandsOf(Ask()), ElementsAre("GetID", "GetSN"));
}

TEST_F(InterviewTest, BelievesTheLastIdentityRatherThanALateAnswer) {
  Connect(SoundBoard());
  bend = [this](int code) {
    if (code == 3 && codes.size() == 1) agent.answers = {ScriptedAgent::Answer{10, 10}};
  };
  const Answers answers = Ask();
  EXPECT_EQ(answers.id, 4133);
  EXPECT_THAT(answers.exchanges[0].answer, ElementsAre(10, 10));
}

/// A board whose serial number could be the answer to another question.
class DoubtfulNumber : public InterviewTest, public testing::WithParamInterface<std::uint32_t> {
 protected:
  void Connect() {
    simulator::BoardState state = SoundBoard();
    state.serial = GetParam();
    InterviewTest::Connect(state);
  }
};

TEST_P(DoubtfulNumber, IsBelievedWhenItComesTwice) {
  Connect();
  EXPECT_EQ(Ask().serialNumber.substr(4), "1234");
  EXPECT_EQ(std::count(codes.begin(), codes.end(), 1), 2);
}

TEST_P(DoubtfulNumber, IsNotBelievedWhenItComesOnce) {
  Connect();
  bend = [this](int code) {
    if (std::count(codes.begin(), codes.end(), 1) == 2 && code == 1) agent.answers.back() = {9, 9};
  };
  EXPECT_EQ(Ask().serialNumber, "");
}

// 10, 10 ends an erase; 1025 in hexadecimal is this board's identity.
INSTANTIATE_TEST_SUITE_P(Interview, DoubtfulNumber, testing::Values(0x0A0A1234U, 0x10251234U));

}  // namespace
}  // namespace kestrin::core::doctor
