// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "support/StackAgentFixture.h"

namespace kestrin::platform::hid {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// Boards that are there and cannot be opened, for whatever reason.
class StackAgentRefused : public support::StackAgentFixture {
 protected:
  support::FakeHidDevice& Plug(const std::string& path) { return bus.Plug(path, support::BoardDescriptor()); }
};

TEST_F(StackAgentRefused, ABoardThatMayNotBeOpenedIsToldApartFromNone) {
  Plug("/dev/hidraw3").notPermitted = true;
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_THAT(agent->AccessProblem(), HasSubstr("/dev/hidraw3"));
#ifdef __linux__
  EXPECT_THAT(agent->AccessProblem(),
              HasSubstr("sudo cp 70-kestrin.rules /etc/udev/rules.d/ && sudo udevadm control --reload && "
                        "sudo udevadm trigger, then plug the board in again"));
#endif
}

// --- Boards that are refused, and then not any more ---

TEST_F(StackAgentRefused, ABoardThatMayBeOpenedAtLastCountsAsArrivedOnce) {
  support::FakeHidDevice& board = Plug("/dev/hidraw3");
  board.notPermitted = true;
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  agent->Refresh();
  EXPECT_THAT(events.lines, IsEmpty());
  EXPECT_NE(agent->AccessProblem(), "");
  board.notPermitted = false;
  agent->Refresh();
  agent->Refresh();
  EXPECT_EQ(events.lines, Lines{"arrival /dev/hidraw3"});
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(agent->AccessProblem(), "");
}

TEST_F(StackAgentRefused, ABoardThatIsRefusedForAnotherReasonThanBeforeCountsAsArrived) {
  support::FakeHidDevice& board = Plug("/dev/hidraw3");
  board.notPermitted = true;
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  board.notPermitted = false;
  board.inUse = true;
  agent->Refresh();
  EXPECT_EQ(events.lines, Lines{"arrival /dev/hidraw3"});
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_EQ(agent->AccessProblem(), "Another program is using this board. Close it and try again.");
}

TEST_F(StackAgentRefused, ARefusedBoardThatIsUnpluggedTakesItsAdviceAlong) {
  for (const bool permitted : {true, false}) {
    support::FakeHidDevice& board = Plug("/dev/hidraw3");
    board.notPermitted = !permitted;
    board.inUse = permitted;
    Create();
    EXPECT_FALSE(agent->SearchAndOpen());
    EXPECT_NE(agent->AccessProblem(), "");
    bus.Unplug("/dev/hidraw3");
    agent->Refresh();
    EXPECT_EQ(agent->AccessProblem(), "");
    EXPECT_THAT(events.lines, IsEmpty());
  }
}

TEST_F(StackAgentRefused, ABoardThatFailsInAWayThatALookDoesNotSeeIsTriedOnce) {
  support::FakeHidDevice& board = bus.Plug("/dev/hidraw3", {0x06, 0x00});
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  for (int look = 0; look < 3; ++look) agent->Refresh();
  EXPECT_THAT(events.lines, IsEmpty());
  EXPECT_EQ(board.timesOpened, 1);
  EXPECT_NE(agent->AccessProblem(), "");
}

TEST_F(StackAgentRefused, ABoardThatGoesWhileItIsOpenedIsNoProblem) {
  Plug("/dev/hidraw3").goesWhenOpened = true;
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_EQ(agent->AccessProblem(), "");
}

TEST_F(StackAgentRefused, TheAccessProblemGoesWithTheNextSearch) {
  support::FakeHidDevice& board = Plug("/dev/hidraw3");
  board.notPermitted = true;
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  board.notPermitted = false;
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(agent->AccessProblem(), "");
}

TEST_F(StackAgentRefused, ABoardBesideOneThatMayNotBeOpenedIsUsed) {
  Plug("/dev/hidraw0").notPermitted = true;
  Plug("/dev/hidraw1");
  Create();
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_THAT(agent->AccessProblem(), HasSubstr("/dev/hidraw0"));
}

TEST_F(StackAgentRefused, ABoardThatFailsToOpenIsNamedWithTheReason) {
  Plug("/dev/hidraw0").openError = "Input/output error";
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_THAT(agent->AccessProblem(), HasSubstr("/dev/hidraw0, but it could not be opened: Input/output error"));
}

TEST_F(StackAgentRefused, ABoardWithADamagedDescriptorIsClosedAgainAndNamed) {
  support::FakeHidDevice& board = bus.Plug("/dev/hidraw0", {0x06, 0x00});
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_EQ(board.opened, 0);
  EXPECT_THAT(agent->AccessProblem(), HasSubstr("an item is cut off"));
}

// --- Boards that another program uses ---

constexpr const char* kInUse = "Another program is using this board. Close it and try again.";

TEST_F(StackAgentRefused, ABoardThatAnotherProgramUsesIsToldApart) {
  Plug("/dev/hidraw3").inUse = true;
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_EQ(agent->AccessProblem(), kInUse);
  EXPECT_THAT(events.lines, IsEmpty());
}

TEST_F(StackAgentRefused, ABoardThatAnotherProgramLetsGoOfCountsAsArrivedOnce) {
  support::FakeHidDevice& board = Plug("/dev/hidraw3");
  board.inUse = true;
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  agent->Refresh();
  EXPECT_THAT(events.lines, IsEmpty());
  board.inUse = false;
  agent->Refresh();
  agent->Refresh();
  EXPECT_EQ(events.lines, Lines{"arrival /dev/hidraw3"});
  EXPECT_EQ(board.timesOpened, 0) << "only the search that the arrival starts takes it";
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(agent->AccessProblem(), "");
}

TEST_F(StackAgentRefused, ABoardThatIsTakenAgainIsWaitedForAgain) {
  support::FakeHidDevice& board = Plug("/dev/hidraw3");
  board.inUse = true;
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  board.inUse = false;
  agent->Refresh();
  board.inUse = true;
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_EQ(agent->AccessProblem(), kInUse);
  events.lines.clear();
  agent->Refresh();
  EXPECT_THAT(events.lines, IsEmpty());
  board.inUse = false;
  agent->Refresh();
  EXPECT_EQ(events.lines, Lines{"arrival /dev/hidraw3"});
}

TEST_F(StackAgentRefused, ABoardThatVanishesWhileAnotherProgramUsesItIsForgotten) {
  Plug("/dev/hidraw3").inUse = true;
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  bus.Unplug("/dev/hidraw3");
  agent->Refresh();
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_EQ(agent->AccessProblem(), "");
  events.lines.clear();
  agent->Refresh();
  EXPECT_THAT(events.lines, IsEmpty());
}

TEST_F(StackAgentRefused, ABoardBesideOneThatAnotherProgramUsesIsUsedAndTheOtherStillWaitedFor) {
  support::FakeHidDevice& other = Plug("/dev/hidraw0");
  other.inUse = true;
  Plug("/dev/hidraw1");
  Create();
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(agent->AccessProblem(), kInUse);
  events.lines.clear();
  other.inUse = false;
  agent->Refresh();
  EXPECT_EQ(events.lines, Lines{"arrival /dev/hidraw0"});
}

TEST_F(StackAgentRefused, AStoppedAgentWaitsForNoBoard) {
  support::FakeHidDevice& board = Plug("/dev/hidraw3");
  board.inUse = true;
  Create();
  EXPECT_FALSE(agent->SearchAndOpen());
  agent->Stop();
  board.inUse = false;
  agent->Refresh();
  EXPECT_THAT(events.lines, IsEmpty());
}

}  // namespace
}  // namespace kestrin::platform::hid
