// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "support/StackAgentFixture.h"

namespace kestrin::platform::hid {
namespace {

using namespace std::chrono_literals;
using core::device::ReportType;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

class StackAgentTransfer : public support::StackAgentFixture {};

TEST_F(StackAgentTransfer, WritesTheWholeReportBehindAZero) {
  support::FakeHidDevice& board = OpenBoard();
  SelectCommand();
  Bytes command(1028);
  for (std::size_t i = 0; i < command.size(); ++i) command[i] = static_cast<std::uint8_t>(i * 7 + 1);
  agent->SetElements(command);
  ASSERT_TRUE(agent->WriteReport());
  Bytes expected{0};
  expected.insert(expected.end(), command.begin(), command.end());
  EXPECT_THAT(board.written, ElementsAre(expected));
}

TEST_F(StackAgentTransfer, WritesAndReadsReportsWithTheirIds) {
  support::FakeHidDevice& board = OpenBoard(support::NumberedBoardDescriptor());
  SelectCommand();
  agent->SetElements(Bytes{42});
  ASSERT_TRUE(agent->WriteReport());
  ASSERT_EQ(board.written.size(), 1U);
  EXPECT_EQ(board.written[0].size(), 1029U);
  EXPECT_EQ(board.written[0][0], 1);
  EXPECT_EQ(board.written[0][1], 42);

  board.input = {{2, 10, 11}};
  SelectAnswer();
  ASSERT_TRUE(agent->ReadReport());
  EXPECT_THAT(Answer(), ElementsAre(10, 11));
}

TEST_F(StackAgentTransfer, PassesOverReportsOfAnotherId) {
  support::FakeHidDevice& board = OpenBoard(support::NumberedBoardDescriptor());
  board.input = {{3, 1, 2, 3, 4}, {3, 5, 6, 7, 8}, {2, 20, 21}};
  ASSERT_TRUE(agent->ReadReport());
  EXPECT_THAT(Answer(), ElementsAre(20, 21));
}

TEST_F(StackAgentTransfer, ReportsOfAnotherIdDoNotLengthenTheWait) {
  support::FakeHidDevice& board = OpenBoard(support::NumberedBoardDescriptor());
  board.onWait = [&] { board.input.push_back({3, 1, 2, 3, 4}); };
  agent->SetEvents(nullptr);
  // Each pass takes no fake time by itself; a tenth of a second goes by in the pump.
  Create([&] { bus.clock.Advance(100ms); });
  ASSERT_TRUE(agent->SearchAndOpen());
  agent->SelectInterface(0);
  SelectAnswer();
  EXPECT_FALSE(agent->ReadReport());
  EXPECT_EQ(bus.clock.Now(), 3000ms);
}

TEST_F(StackAgentTransfer, AWriteThatIsNotTakenWholeFails) {
  support::FakeHidDevice& board = OpenBoard();
  SelectCommand();
  for (const int taken : {0, 1, 1028, 1030, -1}) {
    board.writeResult = taken;
    EXPECT_FALSE(agent->WriteReport()) << taken;
  }
  board.writeResult = 1029;
  EXPECT_TRUE(agent->WriteReport());
}

TEST_F(StackAgentTransfer, ThrowsLateAnswersAwayBeforeItWrites) {
  support::FakeHidDevice& board = OpenBoard();
  board.input = {{1, 1}, {2}, {3, 3, 3}};
  board.onWrite = [&](const Bytes&) { board.input.push_back({9, 9}); };
  SelectCommand();
  ASSERT_TRUE(agent->WriteReport());
  EXPECT_THAT(board.waits, IsEmpty());
  SelectAnswer();
  ASSERT_TRUE(agent->ReadReport());
  EXPECT_THAT(Answer(), ElementsAre(9, 9));
}

TEST_F(StackAgentTransfer, ADeviceThatNeverStopsSendingDoesNotHoldUpAWrite) {
  support::FakeHidDevice& board = OpenBoard();
  board.input.assign(100000, {1, 1});
  SelectCommand();
  EXPECT_TRUE(agent->WriteReport());
  EXPECT_EQ(board.written.size(), 1U);
}

TEST_F(StackAgentTransfer, WaitsThreeSecondsInSlicesOfTwentyMilliseconds) {
  int turns = 0;
  support::FakeHidDevice& board = OpenBoard(support::BoardDescriptor(), [&] { ++turns; });
  EXPECT_FALSE(agent->ReadReport());
  EXPECT_EQ(bus.clock.Now(), 3000ms);
  EXPECT_EQ(board.waits.size(), 150U);
  EXPECT_THAT(board.waits, Each(20ms));
  EXPECT_EQ(turns, 150);
  EXPECT_EQ(events.lines, Lines{"timeout 1 1"});
}

TEST_F(StackAgentTransfer, TimeThatThePumpTakesCounts) {
  OpenBoard(support::BoardDescriptor(), [&] { bus.clock.Advance(1s); });
  EXPECT_FALSE(agent->ReadReport());
  EXPECT_LE(bus.clock.Now(), 3060ms);
}

TEST_F(StackAgentTransfer, TheLastSliceIsOnlyAsLongAsTheTimeThatIsLeft) {
  support::FakeHidDevice& board = OpenBoard(support::BoardDescriptor(), [&] { bus.clock.Advance(1475ms); });
  EXPECT_FALSE(agent->ReadReport());
  EXPECT_THAT(board.waits, ElementsAre(20ms, 20ms, 10ms));
}

TEST_F(StackAgentTransfer, ReadsAnAnswerThatComesWithinTheTime) {
  support::FakeHidDevice& board = OpenBoard();
  board.onWait = [&] {
    if (bus.clock.Now() >= 2980ms) board.input.push_back({10, 10});
  };
  EXPECT_TRUE(agent->ReadReport());
  EXPECT_THAT(Answer(), ElementsAre(10, 10));
  EXPECT_EQ(events.lines, Lines{"report 1 1"});
}

TEST_F(StackAgentTransfer, AnAnswerThatArrivedWhileAPersonThoughtCounts) {
  support::FakeHidDevice* board = nullptr;
  board = &OpenBoard(support::BoardDescriptor(), [&] {
    bus.clock.Advance(60s);
    board->input.push_back({10, 10});
  });
  EXPECT_TRUE(agent->ReadReport());
  EXPECT_THAT(Answer(), ElementsAre(10, 10));
}

TEST_F(StackAgentTransfer, AnAnswerOfAWrongLengthFailsAndLeavesTheValue) {
  support::FakeHidDevice& board = OpenBoard();
  board.input = {{7, 8}};
  ASSERT_TRUE(agent->ReadReport());
  for (const Bytes& wrong : {Bytes{1}, Bytes{1, 2, 3}, Bytes(64, 1)}) {
    board.input = {wrong};
    EXPECT_FALSE(agent->ReadReport()) << wrong.size();
    EXPECT_THAT(Answer(), ElementsAre(7, 8));
  }
}

TEST_F(StackAgentTransfer, AnAnswerOfTheRightIdAndAWrongLengthFails) {
  support::FakeHidDevice& board = OpenBoard(support::NumberedBoardDescriptor());
  for (const Bytes& wrong : {Bytes{2}, Bytes{2, 1}, Bytes{2, 1, 2, 3}}) {
    board.input = {wrong};
    EXPECT_FALSE(agent->ReadReport()) << wrong.size();
  }
}

TEST_F(StackAgentTransfer, AWaitEndsAtOnceWhenTheDeviceGoes) {
  support::FakeHidDevice& board = OpenBoard();
  board.onWait = [&] { board.gone = bus.clock.Now() >= 100ms; };
  EXPECT_FALSE(agent->ReadReport());
  EXPECT_EQ(bus.clock.Now(), 100ms);
  EXPECT_THAT(events.lines, IsEmpty());
}

TEST_F(StackAgentTransfer, NothingIsWrittenToADeviceThatIsGone) {
  support::FakeHidDevice& board = OpenBoard();
  board.gone = true;
  SelectCommand();
  EXPECT_FALSE(agent->WriteReport());
  EXPECT_THAT(board.written, IsEmpty());
}

TEST_F(StackAgentTransfer, ASecondTransferInsideAWaitIsRefused) {
  support::FakeHidDevice* board = nullptr;
  int refused = 0;
  board = &OpenBoard(support::BoardDescriptor(), [&] {
    SelectCommand();
    if (!agent->WriteReport()) ++refused;
    SelectAnswer();
    if (!agent->ReadReport()) ++refused;
    board->input.push_back({5, 6});
  });
  EXPECT_TRUE(agent->ReadReport());
  EXPECT_EQ(refused, 2);
  EXPECT_THAT(board->written, IsEmpty());
  EXPECT_THAT(Answer(), ElementsAre(5, 6));
}

TEST_F(StackAgentTransfer, WhatHandlersSelectInsideAWaitIsForgotten) {
  support::FakeHidDevice* board = nullptr;
  board = &OpenBoard(support::BoardDescriptor(), [&] {
    SelectCommand();
    board->input.push_back({5, 6});
  });
  EXPECT_TRUE(agent->ReadReport());
  EXPECT_EQ(agent->VariableReportNumber(), 1);
  EXPECT_THAT(Answer(), ElementsAre(5, 6));
}

TEST_F(StackAgentTransfer, StoppingInsideAWaitEndsItAndThenTakesEffect) {
  support::FakeHidDevice& board = OpenBoard(support::BoardDescriptor(), [&] { agent->Stop(); });
  EXPECT_FALSE(agent->ReadReport());
  EXPECT_EQ(bus.clock.Now(), 20ms);
  EXPECT_EQ(agent->NumberOfInterfaces(), 0);
  EXPECT_EQ(board.opened, 0);
  EXPECT_THAT(events.lines, IsEmpty());
}

TEST_F(StackAgentTransfer, ReportsThatDoNotExistOrGoTheOtherWayAreRefused) {
  support::FakeHidDevice& board = OpenBoard();
  for (const std::int32_t number : {-1, 2, 1000}) {
    agent->SetCurrentRptNum(number);
    EXPECT_FALSE(agent->WriteReport()) << number;
    EXPECT_FALSE(agent->ReadReport()) << number;
  }
  SelectAnswer();
  EXPECT_FALSE(agent->WriteReport());
  SelectCommand();
  EXPECT_FALSE(agent->ReadReport());
  EXPECT_THAT(board.written, IsEmpty());
  agent->Stop();
  EXPECT_FALSE(agent->WriteReport());
}

TEST_F(StackAgentTransfer, FeatureReportsGoBothWays) {
  const Bytes descriptor{0x06, 0x00, 0xFF, 0x75, 0x08, 0x95, 0x03, 0x85, 0x07, 0x09, 0x05, 0xB1, 0x02};
  support::FakeHidDevice& board = bus.Plug("/dev/hidraw0", descriptor);
  Create();
  ASSERT_TRUE(agent->SearchAndOpen());
  agent->SelectInterface(0);
  Select(ReportType::Feature, 5);
  agent->SetElements(Bytes{1, 2, 3});
  ASSERT_TRUE(agent->WriteReport());
  EXPECT_THAT(board.written, ElementsAre(Bytes{7, 1, 2, 3}));

  board.feature = {7, 4, 5, 6};
  ASSERT_TRUE(agent->ReadReport());
  Bytes values(3);
  agent->GetElements(values);
  EXPECT_THAT(values, ElementsAre(4, 5, 6));
  for (const Bytes& wrong : {Bytes{7, 9, 9}, Bytes{7, 9, 9, 9, 9}}) {
    board.feature = wrong;
    EXPECT_FALSE(agent->ReadReport()) << wrong.size();
  }
  agent->GetElements(values);
  EXPECT_THAT(values, ElementsAre(4, 5, 6));
}

}  // namespace
}  // namespace kestrin::platform::hid
