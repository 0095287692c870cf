// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "support/StackAgentFixture.h"

namespace kestrin::platform::hid {
namespace {

using Kind = DeviceNotice::Kind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class StackAgentEvents : public support::StackAgentFixture {
 protected:
  support::FakeHidDevice& Plug(const std::string& path) { return bus.Plug(path, support::BoardDescriptor()); }
};

TEST_F(StackAgentEvents, ASearchAsksForTheMatchsIdsOnly) {
  Plug("/dev/hidraw0");
  Create();
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_THAT(bus.asked, ElementsAre(Pair(0x04D8, 0xFA37)));
}

TEST_F(StackAgentEvents, ASearchWithoutBothIdsAsksForNothing) {
  Plug("/dev/hidraw0");
  Create();
  for (const bool vendor : {false, true}) {
    core::device::HidMatch match;
    match.VID_To_Match = support::kVendorId;
    match.PID_To_Match = support::kProductId;
    match.SearchOnVID = vendor;
    match.SearchOnPID = !vendor;
    agent->SetMatch(match);
    EXPECT_FALSE(agent->SearchAndOpen());
  }
  EXPECT_THAT(bus.asked, IsEmpty());
}

TEST_F(StackAgentEvents, ADeviceOfOtherIdsWithTheSameUsagesIsIgnored) {
  bus.Plug("/dev/hidraw0", support::BoardDescriptor(), 0x04D8, 0xFA38);
  bus.Plug("/dev/hidraw1", support::BoardDescriptor(), 0x04D9, 0xFA37);
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_THAT(events.lines, IsEmpty());
  EXPECT_EQ(agent->AccessProblem(), "");
}

TEST_F(StackAgentEvents, InterfacesAreOpenedInTheOrderOfTheirNumbers) {
  Plug("/dev/hidraw10");
  Plug("/dev/hidraw9");
  Plug("/dev/hidraw2");
  Create();
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(events.lines,
            (Lines{"opened 1 2/1028 /dev/hidraw2", "opened 2 2/1028 /dev/hidraw9", "opened 3 2/1028 /dev/hidraw10"}));
}

TEST_F(StackAgentEvents, AnInterfaceIsTheLastOneWhenItsOpeningIsTold) {
  Plug("/dev/hidraw0");
  Plug("/dev/hidraw1");
  Create();
  events.onOpened = [&](std::int32_t handle) {
    agent->SelectInterface(agent->NumberOfInterfaces() - 1);
    EXPECT_EQ(agent->InterfaceHandle(), handle);
    EXPECT_EQ(agent->VendorId(), 0x04D8);
    EXPECT_EQ(agent->ProductId(), 0xFA37);
  };
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(events.lines.size(), 2U);
}

TEST_F(StackAgentEvents, ASecondSearchOpensOnlyWhatIsNew) {
  support::FakeHidDevice& first = Plug("/dev/hidraw0");
  Create();
  EXPECT_TRUE(agent->SearchAndOpen());
  Plug("/dev/hidraw1");
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(events.lines, (Lines{"opened 1 2/1028 /dev/hidraw0", "opened 2 2/1028 /dev/hidraw1"}));
  EXPECT_EQ(first.opened, 1);
}

TEST_F(StackAgentEvents, WithAPathOnlyTheBoardThereIsOpened) {
  Plug("/dev/hidraw0");
  Plug("/dev/hidraw1");
  Create({}, "/dev/hidraw1");
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(events.lines, Lines{"opened 1 2/1028 /dev/hidraw1"});
  bus.notices = {{Kind::Arrived, "/dev/hidraw5"}};
  agent->Refresh();
  EXPECT_EQ(events.lines.size(), 1U);
}

// --- Coming and going ---

TEST_F(StackAgentEvents, AnUnpluggedBoardIsClosedAndThenRemoved) {
  Plug("/dev/hidraw0");
  Create();
  ASSERT_TRUE(agent->SearchAndOpen());
  events.lines.clear();
  bus.Unplug("/dev/hidraw0");
  bus.notices = {{Kind::Removed, "/dev/hidraw0"}};
  EXPECT_EQ(agent->NumberOfInterfaces(), 1);
  agent->Refresh();
  EXPECT_EQ(events.lines, (Lines{"closed 1 /dev/hidraw0", "removed 1 /dev/hidraw0"}));
  EXPECT_EQ(agent->NumberOfInterfaces(), 0);
  EXPECT_FALSE(agent->SearchAndOpen());
}

TEST_F(StackAgentEvents, TheInterfacesBehindAClosedOneHaveMovedUpWhenItIsTold) {
  Plug("/dev/hidraw0");
  Plug("/dev/hidraw1");
  Create();
  ASSERT_TRUE(agent->SearchAndOpen());
  agent->SelectInterface(1);
  SelectCommand();
  events.onClosed = [&](std::int32_t) {
    EXPECT_EQ(agent->NumberOfInterfaces(), 1);
    EXPECT_EQ(agent->InterfaceHandle(), 2);
    EXPECT_EQ(agent->VariableReportNumber(), 0);
  };
  bus.Unplug("/dev/hidraw0");
  bus.notices = {{Kind::Removed, "/dev/hidraw0"}};
  agent->Refresh();
}

TEST_F(StackAgentEvents, ClosingTheCurrentInterfaceLeavesNoneSelected) {
  Plug("/dev/hidraw0");
  Plug("/dev/hidraw1");
  Create();
  ASSERT_TRUE(agent->SearchAndOpen());
  agent->SelectInterface(0);
  bus.Unplug("/dev/hidraw0");
  bus.notices = {{Kind::Removed, "/dev/hidraw0"}};
  agent->Refresh();
  EXPECT_THROW(static_cast<void>(agent->InterfaceHandle()), core::device::AgentError);
  EXPECT_THROW(agent->SelectInterface(1), core::device::AgentError);
}

TEST_F(StackAgentEvents, OfTwoBoardsThatGoBothAreClosedBeforeEitherIsRemoved) {
  Plug("/dev/hidraw0");
  Plug("/dev/hidraw1");
  Create();
  ASSERT_TRUE(agent->SearchAndOpen());
  events.lines.clear();
  bus.Unplug("/dev/hidraw0");
  bus.Unplug("/dev/hidraw1");
  bus.notices = {{Kind::Removed, "/dev/hidraw1"}, {Kind::Removed, "/dev/hidraw0"}};
  agent->Refresh();
  EXPECT_EQ(events.lines, (Lines{"closed 1 /dev/hidraw0", "closed 2 /dev/hidraw1", "removed 1 /dev/hidraw0",
                                 "removed 2 /dev/hidraw1"}));
}

TEST_F(StackAgentEvents, ABoardThatArrivesIsToldAndNotOpened) {
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  support::FakeHidDevice& board = Plug("/dev/hidraw4");
  bus.notices = {{Kind::Arrived, "/dev/hidraw4"}};
  agent->Refresh();
  EXPECT_EQ(events.lines, Lines{"arrival /dev/hidraw4"});
  EXPECT_EQ(board.opened, 0);
}

TEST_F(StackAgentEvents, AHandlerMaySearchWhenABoardArrives) {
  Create();
  events.onArrival = [&](const std::string&) { EXPECT_TRUE(agent->SearchAndOpen()); };
  Plug("/dev/hidraw4");
  bus.notices = {{Kind::Arrived, "/dev/hidraw4"}};
  agent->Refresh();
  EXPECT_EQ(events.lines, (Lines{"arrival /dev/hidraw4", "opened 1 2/1028 /dev/hidraw4"}));
}

TEST_F(StackAgentEvents, ABoardThatASearchFoundBeforeItsNoticeIsNotToldTwice) {
  Create();
  Plug("/dev/hidraw0");
  ASSERT_TRUE(agent->SearchAndOpen());
  bus.notices = {{Kind::Arrived, "/dev/hidraw0"}};
  agent->Refresh();
  EXPECT_EQ(events.lines, Lines{"opened 1 2/1028 /dev/hidraw0"});
}

TEST_F(StackAgentEvents, ABoardPluggedInAgainAtTheSamePathIsAnother) {
  Plug("/dev/hidraw0");
  Create();
  ASSERT_TRUE(agent->SearchAndOpen());
  events.lines.clear();
  bus.Unplug("/dev/hidraw0");
  Plug("/dev/hidraw0");
  bus.notices = {{Kind::Removed, "/dev/hidraw0"}, {Kind::Arrived, "/dev/hidraw0"}};
  agent->Refresh();
  EXPECT_EQ(events.lines, (Lines{"closed 1 /dev/hidraw0", "removed 1 /dev/hidraw0", "arrival /dev/hidraw0"}));
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(events.lines.back(), "opened 2 2/1028 /dev/hidraw0");
}

TEST_F(StackAgentEvents, ALateRemovalNoticeDoesNotCloseTheBoardThatCameAfter) {
  Plug("/dev/hidraw0");
  Create();
  ASSERT_TRUE(agent->SearchAndOpen());
  events.lines.clear();
  bus.notices = {{Kind::Removed, "/dev/hidraw0"}};
  agent->Refresh();
  EXPECT_THAT(events.lines, IsEmpty());
  EXPECT_EQ(agent->NumberOfInterfaces(), 1);
}

TEST_F(StackAgentEvents, ABoardThatCameAndWentBetweenTwoLooksIsNotTold) {
  Create();
  bus.notices = {{Kind::Arrived, "/dev/hidraw0"}, {Kind::Removed, "/dev/hidraw0"}};
  agent->Refresh();
  EXPECT_THAT(events.lines, IsEmpty());
}

TEST_F(StackAgentEvents, AFailedTransferOfABoardThatIsGoneNeedsNoNotice) {
  OpenBoard();
  bus.Unplug("/dev/hidraw0");
  EXPECT_FALSE(agent->ReadReport());
  EXPECT_THAT(events.lines, IsEmpty());
  agent->Refresh();
  EXPECT_EQ(events.lines, (Lines{"closed 1 /dev/hidraw0", "removed 1 /dev/hidraw0"}));
}

TEST_F(StackAgentEvents, AFailedTransferOfABoardThatIsThereClosesNothing) {
  support::FakeHidDevice& board = OpenBoard();
  board.readFails = true;
  EXPECT_FALSE(agent->ReadReport());
  agent->Refresh();
  EXPECT_THAT(events.lines, IsEmpty());
  EXPECT_EQ(agent->NumberOfInterfaces(), 1);
}

TEST_F(StackAgentEvents, NoticesInsideAWaitAreKeptForLater) {
  Plug("/dev/hidraw1");
  support::FakeHidDevice* board = nullptr;
  board = &OpenBoard(support::BoardDescriptor(), [&] {
    bus.Unplug("/dev/hidraw1");
    bus.notices = {{Kind::Removed, "/dev/hidraw1"}};
    agent->Refresh();
    EXPECT_THAT(events.lines, IsEmpty());
    EXPECT_EQ(agent->NumberOfInterfaces(), 2);
    board->input.push_back({1, 2});
  });
  EXPECT_TRUE(agent->ReadReport());
  events.lines.clear();
  agent->Refresh();
  EXPECT_EQ(events.lines, (Lines{"closed 2 /dev/hidraw1", "removed 2 /dev/hidraw1"}));
}

TEST_F(StackAgentEvents, ASearchInsideAWaitOpensNothing) {
  support::FakeHidDevice* board = nullptr;
  board = &OpenBoard(support::BoardDescriptor(), [&] {
    bus.Plug("/dev/hidraw1", support::BoardDescriptor());
    EXPECT_TRUE(agent->SearchAndOpen());
    EXPECT_EQ(agent->NumberOfInterfaces(), 1);
    board->input.push_back({1, 2});
  });
  EXPECT_TRUE(agent->ReadReport());
}

TEST_F(StackAgentEvents, ALookInsideAHandlerDoesNotMixTheEventsUp) {
  Plug("/dev/hidraw0");
  Create();
  ASSERT_TRUE(agent->SearchAndOpen());
  events.lines.clear();
  events.onClosed = [&](std::int32_t) {
    agent->Refresh();
    events.lines.push_back("end of closed");
  };
  bus.Unplug("/dev/hidraw0");
  bus.notices = {{Kind::Removed, "/dev/hidraw0"}, {Kind::Arrived, "/dev/hidraw1"}};
  agent->Refresh();
  EXPECT_EQ(events.lines,
            (Lines{"closed 1 /dev/hidraw0", "end of closed", "removed 1 /dev/hidraw0", "arrival /dev/hidraw1"}));
}

TEST_F(StackAgentEvents, StoppingClosesEverythingWithoutAWordAndStopsWatching) {
  support::FakeHidDevice& board = OpenBoard();
  agent->Stop();
  EXPECT_EQ(agent->NumberOfInterfaces(), 0);
  EXPECT_EQ(board.opened, 0);
  bus.notices = {{Kind::Arrived, "/dev/hidraw1"}};
  agent->Refresh();
  EXPECT_THAT(events.lines, IsEmpty());
}

TEST_F(StackAgentEvents, StoppingInsideAHandlerEndsTheEvents) {
  Plug("/dev/hidraw0");
  Plug("/dev/hidraw1");
  Create();
  events.onOpened = [&](std::int32_t) { agent->Stop(); };
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_EQ(events.lines, Lines{"opened 1 2/1028 /dev/hidraw0"});

  events.lines.clear();
  events.onOpened = nullptr;
  agent->Start();
  ASSERT_TRUE(agent->SearchAndOpen());
  events.lines.clear();
  events.onClosed = [&](std::int32_t) { agent->Stop(); };
  bus.Unplug("/dev/hidraw0");
  bus.notices = {{Kind::Removed, "/dev/hidraw0"}};
  agent->Refresh();
  EXPECT_EQ(events.lines, Lines{"closed 2 /dev/hidraw0"});
}

TEST_F(StackAgentEvents, HandlesAreNeverUsedTwice) {
  Plug("/dev/hidraw0");
  Create();
  ASSERT_TRUE(agent->SearchAndOpen());
  agent->Stop();
  agent->Start();
  ASSERT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(events.lines, (Lines{"opened 1 2/1028 /dev/hidraw0", "opened 2 2/1028 /dev/hidraw0"}));
}

}  // namespace
}  // namespace kestrin::platform::hid
