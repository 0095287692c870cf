// SPDX-License-Identifier: MIT
// A board that holds up what is written to it, and what may happen meanwhile.
#include <gmock/gmock.h>

#include <stdexcept>

#include "core/device/TLS.h"
#include "support/StackAgentFixture.h"

namespace kestrin::platform::hid {
namespace {

using namespace std::chrono_literals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kForEver = 1000000;

class StackAgentWrite : public support::StackAgentFixture {
 protected:
  /// A board whose command is selected and that takes nothing for so many slices.
  support::FakeHidDevice& OpenSlowBoard(int slices) {
    support::FakeHidDevice& board = OpenBoard(support::BoardDescriptor(), [this] {
      ++turns;
      if (onTurn) onTurn();
    });
    board.slowWrites = slices;
    SelectCommand();
    return board;
  }

  int turns = 0;
  std::function<void()> onTurn;
};

TEST_F(StackAgentWrite, ABoardThatIsWellIsNotWaitedFor) {
  support::FakeHidDevice& board = OpenSlowBoard(0);
  EXPECT_TRUE(agent->WriteReport());
  EXPECT_EQ(turns, 0);
  EXPECT_THAT(board.writeWaits, IsEmpty());
}

TEST_F(StackAgentWrite, EachSliceOfTheWaitIsFollowedByATurn) {
  support::FakeHidDevice& board = OpenSlowBoard(250);
  EXPECT_TRUE(agent->WriteReport());
  EXPECT_EQ(bus.clock.Now(), 5000ms);
  EXPECT_EQ(turns, 250);
  EXPECT_THAT(board.writeWaits, Each(20ms));
  EXPECT_THAT(board.written, SizeIs(1));
  // An answer that came meanwhile is there.
  board.input = {{5, 6}};
  SelectAnswer();
  EXPECT_TRUE(agent->ReadReport());
}

TEST_F(StackAgentWrite, AFailureBehindTheWaitIsOne) {
  support::FakeHidDevice& board = OpenSlowBoard(250);
  board.writeResult = -1;
  EXPECT_FALSE(agent->WriteReport());
  EXPECT_EQ(bus.clock.Now(), 5000ms);
  EXPECT_THAT(board.written, SizeIs(1)) << "something was tried again";
}

TEST_F(StackAgentWrite, IsGivenUpAfterSixSeconds) {
  support::FakeHidDevice& board = OpenSlowBoard(kForEver);
  EXPECT_FALSE(agent->WriteReport());
  EXPECT_EQ(bus.clock.Now(), 6000ms);
  EXPECT_THAT(board.written, SizeIs(1));
}

TEST_F(StackAgentWrite, NothingIsWrittenOnTopOfOneThatGoesOn) {
  support::FakeHidDevice& board = OpenSlowBoard(kForEver);
  EXPECT_FALSE(agent->WriteReport());
  turns = 0;
  EXPECT_FALSE(agent->WriteReport());
  EXPECT_EQ(turns, 0) << "it was not refused at once";
  EXPECT_THAT(board.written, SizeIs(1));
  board.slowWrites = 0;
  EXPECT_TRUE(agent->WriteReport());
  EXPECT_THAT(board.written, SizeIs(2));
}

TEST_F(StackAgentWrite, ATransferInsideIsRefused) {
  support::FakeHidDevice& board = OpenSlowBoard(3);
  int refused = 0;
  onTurn = [&] {
    SelectCommand();
    if (!agent->WriteReport()) ++refused;
    SelectAnswer();
    if (!agent->ReadReport()) ++refused;
  };
  EXPECT_TRUE(agent->WriteReport());
  EXPECT_EQ(refused, 6);
  EXPECT_THAT(board.written, SizeIs(1));
  // What was selected meanwhile is forgotten.
  EXPECT_EQ(agent->VariableReportNumber(), 0);
}

TEST_F(StackAgentWrite, ASearchInsideOpensNothingAndNoticesAreLeftForLater) {
  support::FakeHidDevice& board = OpenSlowBoard(1);
  onTurn = [&] {
    bus.Plug("/dev/hidraw1", support::BoardDescriptor());
    EXPECT_TRUE(agent->SearchAndOpen());
    EXPECT_EQ(agent->NumberOfInterfaces(), 1);
    bus.notices = {{DeviceNotice::Kind::Arrived, "/dev/hidraw1"}};
    agent->Refresh();
    EXPECT_THAT(events.lines, IsEmpty());
  };
  EXPECT_TRUE(agent->WriteReport());
  EXPECT_THAT(board.written, SizeIs(1));
  agent->Refresh();
  EXPECT_EQ(events.lines, Lines{"arrival /dev/hidraw1"});
}

TEST_F(StackAgentWrite, StoppingInsideEndsTheWaitAndThenTakesEffect) {
  support::FakeHidDevice& board = OpenSlowBoard(kForEver);
  onTurn = [&] { agent->Stop(); };
  EXPECT_FALSE(agent->WriteReport());
  EXPECT_EQ(bus.clock.Now(), 20ms);
  EXPECT_EQ(agent->NumberOfInterfaces(), 0);
  EXPECT_EQ(board.opened, 0);
}

TEST_F(StackAgentWrite, WhoeverThrowsInsideEndsTheWait) {
  support::FakeHidDevice& board = OpenSlowBoard(kForEver);
  onTurn = [] { throw std::runtime_error("Stopped"); };
  EXPECT_THROW(static_cast<void>(agent->WriteReport()), std::runtime_error);
  EXPECT_EQ(bus.clock.Now(), 20ms);
  // The next one does not wait for the end of the first one.
  EXPECT_FALSE(agent->WriteReport());
  EXPECT_EQ(turns, 1);
  board.slowWrites = 0;
  EXPECT_TRUE(agent->WriteReport());
}

// --- In a hurry ---

TEST_F(StackAgentWrite, InAHurryNothingIsWaitedForLongerThanABoardThatIsWellNeeds) {
  support::FakeHidDevice& board = OpenSlowBoard(kForEver);
  agent->Hurry();
  EXPECT_FALSE(agent->WriteReport());
  EXPECT_EQ(bus.clock.Now(), 100ms);
  EXPECT_EQ(turns, 0) << "somebody had a turn in a program that ends";
  board.slowWrites = 1;
  EXPECT_FALSE(agent->WriteReport());
  board.slowWrites = 0;
  EXPECT_TRUE(agent->WriteReport());
  EXPECT_THAT(board.written, SizeIs(2));
}

TEST_F(StackAgentWrite, AHurryThatComesMeanwhileEndsTheWaitForAWriteButNotForAnAnswer) {
  support::FakeHidDevice& board = OpenSlowBoard(kForEver);
  onTurn = [&] { agent->Hurry(); };
  EXPECT_FALSE(agent->WriteReport());
  EXPECT_EQ(bus.clock.Now(), 120ms);
  EXPECT_EQ(turns, 1);
  board.slowWrites = 0;
  board.onWait = [&] {
    if (bus.clock.Now() >= 2000ms) board.input.push_back({5, 6});
  };
  SelectAnswer();
  EXPECT_TRUE(agent->ReadReport());
}

TEST_F(StackAgentWrite, AnAgentThatIsStartedAnewIsInNoHurry) {
  OpenSlowBoard(4);
  agent->Hurry();
  agent->Stop();
  agent->Start();
  ASSERT_TRUE(agent->SearchAndOpen());
  agent->SelectInterface(0);
  SelectCommand();
  EXPECT_TRUE(agent->WriteReport());
  EXPECT_EQ(bus.clock.Now(), 80ms);
}

}  // namespace
}  // namespace kestrin::platform::hid
