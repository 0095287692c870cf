// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <future>
#include <thread>

#include "core/device/DeviceSession.h"
#include "platform/hid/BoardLock.h"
#include "rig/RigFixture.h"
#include "support/QuietSessionView.h"

namespace kestrin::rig {
namespace {

using testing::IsEmpty;

class Plugging : public RigFixture {};

TEST_F(Plugging, UnpluggingIsNoticedAtTheNextLook) {
  GoOnline();
  mock.Unplug();
  EXPECT_THAT(events.lines, IsEmpty());
  agent->Refresh();
  EXPECT_EQ(events.lines, (Lines{"closed 1 /dev/hidraw0", "removed 1 /dev/hidraw0"}));
  EXPECT_EQ(agent->NumberOfInterfaces(), 0);
  EXPECT_FALSE(agent->SearchAndOpen());
}

TEST_F(Plugging, PluggingInIsNoticedAndTheBoardWorksAgain) {
  GoOnline();
  // The same name, and others; each time another handle.
  std::int32_t handle = 1;
  for (const int number : {0, 0, 5, 0}) {
    mock.Unplug();
    agent->Refresh();
    tls.HidClosed(handle++);
    events.lines.clear();
    mock.Plug(number);
    agent->Refresh();
    ASSERT_EQ(events.lines, Lines{"arrival " + mock.Node()});
    ASSERT_TRUE(agent->SearchAndOpen()) << agent->AccessProblem();
    ASSERT_EQ(tls.BindVars(*agent), 0);
    ASSERT_TRUE(tls.HasHandle(handle));
    EXPECT_EQ(tls.GetSN(), "4B535401");
  }
}

TEST_F(Plugging, AQuickUnplugAndPlugBetweenTwoLooksIsNoticed) {
  GoOnline();
  mock.Unplug();
  mock.Plug(0);
  agent->Refresh();
  EXPECT_EQ(events.lines, (Lines{"closed 1 /dev/hidraw0", "removed 1 /dev/hidraw0", "arrival /dev/hidraw0"}));
}

TEST_F(Plugging, WatchingEndsWithStop) {
  GoOnline();
  agent->Stop();
  mock.Unplug();
  mock.Plug(1);
  agent->Refresh();
  EXPECT_THAT(events.lines, IsEmpty());
}

TEST_F(Plugging, UnpluggingInASeriesOfWritesFailsEveryCommandFromThere) {
  GoOnline();
  mock.goneAtWrite = 4;
  const Bytes block(1024, 0x5A);
  std::vector<bool> written;
  for (int i = 0; i < 6; ++i) written.push_back(tls.Write1k(1024 * i, block));
  EXPECT_EQ(written, (std::vector<bool>{true, true, true, false, false, false}));
  EXPECT_EQ(board.Flash()[3 * 1024 - 1], 0x5A);
  EXPECT_EQ(board.Flash()[3 * 1024], 0xFF);
  mock.Unplug();
  events.lines.clear();
  agent->Refresh();
  EXPECT_EQ(events.lines, (Lines{"closed 1 /dev/hidraw0", "removed 1 /dev/hidraw0"}));
}

TEST_F(Plugging, UnpluggingWhileAReadWaitsEndsTheWaitAtOnce) {
  mock.onReport = nullptr;
  GoOnline();
  // The clock stands still: only the unplugged board can end this wait.
  turnTime = {};
  std::promise<void> waiting;
  onTurn = [&] {
    if (turns == 1) waiting.set_value();
  };
  std::thread person([&] {
    waiting.get_future().wait();
    mock.Unplug();
  });
  EXPECT_EQ(tls.GetID(), 0);
  person.join();
  EXPECT_THAT(events.lines, IsEmpty());
  agent->Refresh();
  EXPECT_EQ(events.lines, (Lines{"closed 1 /dev/hidraw0", "removed 1 /dev/hidraw0"}));
}

TEST_F(Plugging, UnpluggingOneOfTwoBoardsLeavesTheOther) {
  MockBoard::Description description;
  description.port = 2;
  MockBoard other(host, description);
  other.AnswerWith(board);
  other.Plug(1);
  GoOnline(0);
  EXPECT_EQ(agent->NumberOfInterfaces(), 2);
  mock.Unplug();
  agent->Refresh();
  EXPECT_EQ(events.lines, (Lines{"closed 1 /dev/hidraw0", "removed 1 /dev/hidraw0"}));
  ASSERT_EQ(agent->NumberOfInterfaces(), 1);
  EXPECT_EQ(tls.GetSN(), "4B535401");
}

TEST_F(Plugging, TheSessionGoesOfflineAndOnlineAgainWithTheBoard) {
  CreateAgent();
  support::QuietSessionView view;
  core::device::DeviceSession session(*agent, view);
  mock.Plug(0);
  ASSERT_EQ(session.SearchAtStartUp(), core::device::DeviceSession::StartUp::Online);
  EXPECT_EQ(view.state.serialLabel, "Kestrin USB Serial Number: 4B535401");

  mock.Unplug();
  agent->Refresh();
  EXPECT_FALSE(session.State().IsOnline());
  EXPECT_EQ(session.State().boards, 0U);
  EXPECT_TRUE(view.timerRuns);
  session.GoOnlineTimerTick();
  EXPECT_FALSE(session.State().IsOnline());

  mock.Plug(2);
  session.GoOnlineTimerTick();
  EXPECT_TRUE(session.State().IsOnline());
  EXPECT_FALSE(view.timerRuns);
  EXPECT_EQ(view.state.serialLabel, "Kestrin USB Serial Number: 4B535401");

  session.Exit();
  EXPECT_EQ(board.State().byes, 1U);
}

TEST_F(Plugging, TheSessionGoesOnlineByItselfWhenAnotherProgramLetsGoOfTheBoard) {
  CreateAgent();
  support::QuietSessionView view;
  core::device::DeviceSession session(*agent, view);
  mock.Plug(0);
  std::unique_ptr<core::base::Disk::Lock> claim = platform::hid::LockBoard(mock.Node()).lock;
  ASSERT_NE(session.SearchAtStartUp(), core::device::DeviceSession::StartUp::Online);
  session.GoOnlineTimerTick();
  EXPECT_FALSE(session.State().IsOnline());
  claim.reset();
  session.GoOnlineTimerTick();
  EXPECT_TRUE(session.State().IsOnline());
  EXPECT_EQ(view.state.serialLabel, "Kestrin USB Serial Number: 4B535401");
}

TEST_F(Plugging, ABoardUnpluggedInTheMiddleOfASessionIsLeftWithoutAHang) {
  CreateAgent();
  support::QuietSessionView view;
  core::device::DeviceSession session(*agent, view);
  mock.Plug(0);
  ASSERT_EQ(session.SearchAtStartUp(), core::device::DeviceSession::StartUp::Online);
  mock.Unplug();
  EXPECT_EQ(session.Board()->GetSN(), "NoSerialNumber");
  EXPECT_FALSE(session.Board()->Reset());
  session.Exit();
}

}  // namespace
}  // namespace kestrin::rig
