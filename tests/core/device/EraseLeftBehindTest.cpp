// SPDX-License-Identifier: MIT
// A program was ended while a board erased its flash. Whatever program comes next, at any moment, takes the board for
// what it is: the answer of the erase, and answers to who asked in between, are nobody's identity or serial number.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "core/device/DeviceSession.h"
#include "simulator/SimulatedAgent.h"
#include "support/FakeClock.h"
#include "support/QuietSessionView.h"

namespace kestrin::core::device {
namespace {

using namespace std::chrono_literals;
using base::Clock;
using support::FakeClock;
using support::QuietSessionView;

/// The program is ended in the middle of what it does.
class Killed : public std::runtime_error {
 public:
  Killed() : std::runtime_error("killed") {}
};

/// A board that erases, and the programs that come one after the other.
class ErasingBoard {
 public:
  explicit ErasingBoard(Clock::Duration erase, std::uint16_t id = 64, std::uint32_t serial = 0x4B535401,
                        simulator::BoardOptions::Wire wire = simulator::BoardOptions::Wire::None) {
    simulator::BoardOptions options;
    options.erase = erase;
    options.id = id;
    options.serial = serial;
    options.wire = wire;
    m_agent = std::make_unique<simulator::SimulatedAgent>(options, clock, [this] {
      if (m_end && clock.Now() >= *m_end) throw Killed();
    });
  }

  FakeClock clock;

  /// A program starts the erase and is gone.
  void Erase() {
    QuietSessionView view(true);
    DeviceSession session(*m_agent, view);
    ASSERT_EQ(session.SearchAtStartUp(), DeviceSession::StartUp::Online);
    ASSERT_TRUE(session.Board()->ClearFlash());
    m_agent->Stop();
  }
  /// Another program starts now and is ended after that time, if it takes so long.
  void StartAndKillAfter(Clock::Duration time) {
    QuietSessionView view(true);
    DeviceSession session(*m_agent, view);
    m_end = clock.Now() + time;
    try {
      static_cast<void>(session.SearchAtStartUp());
    } catch (const Killed&) {
    }
    m_end.reset();
    m_agent->Stop();
  }
  [[nodiscard]] simulator::SimulatedAgent& Agent() { return *m_agent; }

 private:
  std::optional<Clock::Duration> m_end;
  std::unique_ptr<simulator::SimulatedAgent> m_agent;
};

void ExpectUsb64(const DeviceSession& session, const QuietSessionView& view) {
  EXPECT_TRUE(session.State().IsOnline());
  EXPECT_TRUE(session.State().IsIdentified());
  EXPECT_EQ(session.State().id, 64);
  EXPECT_EQ(session.State().deviceType, DeviceType::SoundBoard);
  EXPECT_EQ(session.State().serialNumber, "4B535401");
  EXPECT_EQ(view.state.serialLabel, "Kestrin USB 64 Serial Number: 4B535401");
  // Nothing is left over that the next command could take for its answer: the erase has wiped the parameters.
  AccParam parameters;
  EXPECT_TRUE(session.Board()->GetAccParam(parameters));
  EXPECT_EQ(parameters, (AccParam{255, 255, 255, 255, 255, 255}));
}

/// Calls `check` with a board of each erase time that has been erasing for each time up to a little more than that:
/// in coarse steps all along, in fine ones around its end.
void AtEveryMoment(const std::function<void(ErasingBoard&)>& check,
                   simulator::BoardOptions::Wire wire = simulator::BoardOptions::Wire::None) {
  for (const Clock::Duration erase : {1s, 5s, 15s, 29s}) {
    std::vector<Clock::Duration> moments;
    for (Clock::Duration moment{}; moment < erase + 500ms; moment += 70ms) moments.push_back(moment);
    for (const Clock::Duration wait : {0ms, 3000ms, 6000ms})
      for (Clock::Duration offset = -60ms; offset < 10ms; offset += 1ms)
        if (erase > wait - offset) moments.push_back(erase - wait + offset);
    for (const Clock::Duration moment : moments) {
      SCOPED_TRACE("an erase of " + std::to_string(erase / 1s) + " s, " + std::to_string(moment / 1ms) + " ms on");
      ErasingBoard board(erase, 64, 0x4B535401, wire);
      board.Erase();
      board.clock.Advance(moment);
      check(board);
      if (::testing::Test::HasFailure()) return;
    }
  }
}

void ExpectThatWaitingFindsIt(ErasingBoard& board) {
  QuietSessionView view(true);
  DeviceSession session(board.Agent(), view);
  EXPECT_EQ(session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  ExpectUsb64(session, view);
}

TEST(EraseLeftBehind, IsWaitedForAtAnyMoment) { AtEveryMoment(ExpectThatWaitingFindsIt); }

TEST(EraseLeftBehind, IsWaitedForOnASlowWireToo) {
  AtEveryMoment(ExpectThatWaitingFindsIt, simulator::BoardOptions::Wire::Usb);
}

void ExpectThatTicksFindIt(ErasingBoard& board) {
  QuietSessionView view(false);
  DeviceSession session(board.Agent(), view);
  const Clock::Duration start = board.clock.Now();
  static_cast<void>(session.SearchAtStartUp());
  EXPECT_FALSE(view.asked) << "the board is there";
  while (!session.State().IsOnline()) {
    ASSERT_TRUE(view.timerRuns);
    ASSERT_EQ(view.state.serialLabel, "");
    board.clock.Advance(std::chrono::milliseconds(DeviceSession::kReconnectMilliseconds));
    const Clock::Duration before = board.clock.Now();
    session.GoOnlineTimerTick();
    // One read in vain; nothing waits for the end of the erase.
    ASSERT_LE(board.clock.Now() - before, 6100ms);
    ASSERT_LE(board.clock.Now() - start, 45s);
  }
  ExpectUsb64(session, view);
}

TEST(EraseLeftBehind, IsLeftToTheTimerByWhoDoesNotWait) { AtEveryMoment(ExpectThatTicksFindIt); }

TEST(EraseLeftBehind, IsLeftToTheTimerOnASlowWireToo) {
  AtEveryMoment(ExpectThatTicksFindIt, simulator::BoardOptions::Wire::Usb);
}

TEST(EraseLeftBehind, IsWaitedForAlsoBehindAnotherProgramThatGaveUp) {
  for (const Clock::Duration patience : {100ms, 4000ms, 9500ms})
    AtEveryMoment([patience](ErasingBoard& board) {
      board.StartAndKillAfter(patience);
      ExpectThatWaitingFindsIt(board);
    });
}

TEST(EraseLeftBehind, CanBeStoppedBeingWaitedFor) {
  ErasingBoard board(29s);
  board.Erase();
  board.StartAndKillAfter(7s);
  EXPECT_LT(board.clock.Now(), 7100ms);
}

TEST(EraseLeftBehind, IsToldWhileItIsWaitedFor) {
  ErasingBoard board(10s);
  board.Erase();
  QuietSessionView view(true);
  DeviceSession session(board.Agent(), view);
  static_cast<void>(session.SearchAtStartUp());
  EXPECT_EQ(view.waitText, "The board is still busy, please wait ...");
}

TEST(EraseLeftBehind, OfThisProgramTakesTheBoardOfflineUntilItIsOver) {
  ErasingBoard board(15s);
  QuietSessionView view(false);
  DeviceSession session(board.Agent(), view);
  ASSERT_EQ(session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  EXPECT_FALSE(session.State().isFinishing);
  ASSERT_TRUE(session.Board()->ClearFlash());
  session.LetBoardFinish();
  EXPECT_TRUE(session.State().isFinishing);
  EXPECT_FALSE(session.State().IsOnline());
  for (int tick = 0; tick < 12 && !session.State().IsOnline(); ++tick) {
    board.clock.Advance(1s);
    session.GoOnlineTimerTick();
  }
  EXPECT_FALSE(session.State().isFinishing);
  EXPECT_GE(board.clock.Now(), 15s);
  ExpectUsb64(session, view);
}

TEST(EraseLeftBehind, IsForgottenWithTheBoardThatWasUnplugged) {
  ErasingBoard board(15s);
  QuietSessionView view(false);
  DeviceSession session(board.Agent(), view);
  ASSERT_EQ(session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  ASSERT_TRUE(session.Board()->ClearFlash());
  session.LetBoardFinish();
  board.Agent().Unplug();
  board.Agent().Refresh();
  EXPECT_FALSE(session.State().isFinishing);
  board.Agent().Plug();
  session.GoOnlineTimerTick();
  ExpectUsb64(session, view);
  EXPECT_EQ(board.clock.Now(), 0s);
}

// --- Boards that look like it ---

TEST(EraseLeftBehind, IsNotSeenInALedDriverWhoseIdentityLooksLikeItsAnswer) {
  ErasingBoard board(0s, 2570);
  for (const bool waits : {true, false}) {
    QuietSessionView view(waits);
    DeviceSession session(board.Agent(), view);
    ASSERT_EQ(session.SearchAtStartUp(), DeviceSession::StartUp::Online);
    EXPECT_TRUE(session.State().IsIdentified());
    EXPECT_EQ(session.State().deviceType, DeviceType::LedDriver);
    EXPECT_EQ(session.State().id, 2570);
    EXPECT_EQ(session.State().serialNumber, "4B535401");
    session.Exit();
  }
}

TEST(EraseLeftBehind, IsNotSeenInASerialNumberThatLooksLikeItsAnswer) {
  for (const std::uint32_t serial : {0x0A0A0001U, 0x0A0A0A0AU, 0x00400040U}) {
    ErasingBoard board(0s, 64, serial);
    QuietSessionView view(false);
    DeviceSession session(board.Agent(), view);
    ASSERT_EQ(session.SearchAtStartUp(), DeviceSession::StartUp::Online);
    EXPECT_TRUE(session.State().IsIdentified());
    session.GoOffline();
    session.GoOnlineTimerTick();
    EXPECT_TRUE(session.State().IsOnline());
    EXPECT_TRUE(session.State().IsIdentified());
  }
}

TEST(EraseLeftBehind, CostsNothingWhereThereIsNone) {
  ErasingBoard board(29s);
  QuietSessionView view(true);
  DeviceSession session(board.Agent(), view);
  ASSERT_EQ(session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  session.GoOffline();
  session.GoOnlineTimerTick();
  EXPECT_TRUE(session.State().IsIdentified());
  EXPECT_EQ(board.clock.Now(), 0s);
  EXPECT_EQ(view.waitText, "");
}

}  // namespace
}  // namespace kestrin::core::device
