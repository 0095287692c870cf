// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <numeric>
#include <thread>

#include "core/base/Clock.h"
#include "platform/hid/BoardLock.h"
#include "rig/RigFixture.h"

namespace kestrin::rig {
namespace {

using namespace std::chrono_literals;
using testing::Each;
using testing::IsEmpty;

class Transfer : public RigFixture {};

// --- Every command, from TLS through the kernel's interface to the firmware and back ---

TEST_F(Transfer, IdentityAndSerialNumberComeBack) {
  GoOnline();
  EXPECT_EQ(tls.GetID(), 0);
  EXPECT_EQ(tls.GetMemorySize(), 0);
  EXPECT_EQ(tls.GetSN(), "4B535401");
}

TEST_F(Transfer, AnIdentityOfTwoBytesComesBackWhole) {
  simulator::BoardState state;
  state.id = 4133;
  simulator::VirtualBoard other(state);
  mock.AnswerWith(other);
  GoOnline();
  EXPECT_EQ(tls.GetID(), 4133);
  EXPECT_EQ(tls.GetMemorySize(), 16);
}

TEST_F(Transfer, FlashIsErasedWrittenAndSummed) {
  GoOnline();
  ASSERT_TRUE(tls.ClearFlash());
  ASSERT_TRUE(tls.CheckCompletion());
  EXPECT_THAT(board.State().accelerometer, Each(255));

  Bytes block(1024);
  std::iota(block.begin(), block.end(), std::uint8_t{0});
  ASSERT_TRUE(tls.Write1k(0x012345, block));
  EXPECT_TRUE(std::equal(block.begin(), block.end(), board.Flash().begin() + 0x012345));

  const Bytes rest{1, 2, 3, 250, 251};
  ASSERT_TRUE(tls.WriteLess(0x012745, 5, rest));
  EXPECT_TRUE(std::equal(rest.begin(), rest.end(), board.Flash().begin() + 0x012745));
  Bytes longest(1021, 0xFF);
  ASSERT_TRUE(tls.WriteLess(0x020000, 1021, longest));

  ASSERT_TRUE(tls.CheckCRC(0x012345, 1029));
  // Four times 0 + 1 + .. + 255 = 130,560, and 1 + 2 + 3 + 250 + 251 = 507; 131,067 modulo 65,536 = 65,531.
  EXPECT_EQ(tls.Get_LS_Response(0) * 256 + tls.Get_LS_Response(1), 65531);
}

TEST_F(Transfer, DetectionParametersGoThereAndBack) {
  GoOnline();
  core::device::AccParam read;
  ASSERT_TRUE(tls.GetAccParam(read));
  EXPECT_EQ(read, (core::device::AccParam{180, 2, 10, 50, 125, 13}));
  const core::device::AccParam written{1, 2, 3, 254, 255, 128};
  ASSERT_TRUE(tls.SetAccParam(written));
  ASSERT_TRUE(tls.GetAccParam(read));
  EXPECT_EQ(read, written);
  std::int32_t x = 99;
  std::int32_t y = 99;
  std::int32_t z = 99;
  std::int32_t w = 99;
  ASSERT_TRUE(tls.GetACC(x, y, z, w));
  EXPECT_LE(std::max({std::abs(x), std::abs(y), std::abs(z)}), 31);
}

TEST_F(Transfer, LedSettingsGoThereAndBack) {
  GoOnline();
  const std::array<std::int32_t, 9> written{1, 255, 256, 65535, 4, 5, 6, 7, 0x1234};
  std::array<std::int32_t, 9> read{};
  ASSERT_TRUE(tls.SetLEDParam(written));
  ASSERT_TRUE(tls.GetLEDParam(read));
  EXPECT_EQ(read, written);

  ASSERT_TRUE(tls.SetLEDConfig(7, 4.2, 85));
  std::int32_t code = 0;
  double voltage = 0;
  std::int32_t overdrive = 0;
  ASSERT_TRUE(tls.GetLEDConfig(code, voltage, overdrive));
  EXPECT_EQ(code, 7);
  EXPECT_DOUBLE_EQ(voltage, 4.2);
  EXPECT_EQ(overdrive, 85);

  core::led::LED_Pulse pulse;
  for (int channel = 1; channel <= 4; ++channel) {
    pulse.SetLow(channel, static_cast<std::int16_t>(channel));
    pulse.SetHigh(channel, static_cast<std::int16_t>(250 + channel));
  }
  pulse.Ton = 1500;
  pulse.Toff = 20;
  pulse.Trise = 300;
  pulse.Tfall = 65535;
  pulse.NRep = 3;
  ASSERT_TRUE(tls.SetLEDPulses(1, pulse));
  core::led::LED_Pulse back;
  ASSERT_TRUE(tls.GetLEDPulses(1, back));
  EXPECT_EQ(back.GetLow(4), 4);
  EXPECT_EQ(back.GetHigh(4), 254);
  EXPECT_EQ(back.Ton, 1500);
  EXPECT_EQ(back.Toff, 20);
  EXPECT_EQ(back.Trise, 300);
  EXPECT_EQ(back.Tfall, 65535);
  EXPECT_EQ(back.NRep, 3);
  ASSERT_TRUE(tls.StartPulse(1));
  EXPECT_EQ(board.State().pulseStarted, 1);
}

TEST_F(Transfer, CommandsWithoutAnAnswerArrive) {
  GoOnline();
  ASSERT_TRUE(tls.Reset());
  ASSERT_TRUE(tls.Bye());
  EXPECT_EQ(board.State().resets, 1U);
  EXPECT_EQ(board.State().byes, 1U);
}

// --- What goes wrong ---

TEST_F(Transfer, ASilentBoardIsGivenUpAfterThreeSeconds) {
  mock.onReport = nullptr;
  GoOnline();
  EXPECT_EQ(tls.GetSN(), "NoSerialNumber");
  EXPECT_EQ(events.lines, Lines{"timeout 1 1"});
  // On a busy machine the question has turns of its own. The wait alone:
  turns = 0;
  EXPECT_FALSE(tls.ReadInputRptB());
  EXPECT_EQ(turns, 3);
}

TEST_F(Transfer, TheWaitSleepsThroughItsSlices) {
  mock.onReport = nullptr;
  mock.Plug();
  core::base::SystemClock real;
  agent = platform::hid::CreateHidAgent(real, {[this] { ++turns; }, ""});
  agent->SetMatch(BoardMatch());
  ASSERT_TRUE(agent->SearchAndOpen());
  ASSERT_EQ(tls.BindVars(*agent), 0);
  EXPECT_FALSE(tls.ReadInputRptB());
  // A slice may take longer on a busy machine, never shorter: 3,000 ms hold at most 150. A wait that does not sleep has
  // thousands of turns.
  EXPECT_LE(turns, 151);
  EXPECT_GE(turns, 1);
}

TEST_F(Transfer, AnAnswerThatCameTooLateIsNotTakenForTheNextOne) {
  mock.onReport = nullptr;
  GoOnline();
  EXPECT_EQ(tls.GetID(), 0);
  mock.Send({0x77, 0x77});
  mock.Send({0x78, 0x78});
  mock.AnswerWith(board);
  EXPECT_EQ(tls.GetSN(), "4B535401");
}

TEST_F(Transfer, AnAnswerThatComesWhileTheHostWaitsIsTaken) {
  mock.onReport = nullptr;
  GoOnline();
  onTurn = [&] {
    if (turns == 2) mock.Send({10, 11});
  };
  EXPECT_EQ(tls.GetID(), 10 * 256 + 11);
}

TEST_F(Transfer, SignalsThatComeWhileTheHostWaitsDoNotFailTheCommand) {
  struct sigaction quiet {};
  quiet.sa_handler = [](int) {};
  quiet.sa_flags = SA_RESTART;
  struct sigaction before {};
  ASSERT_EQ(::sigaction(SIGUSR1, &quiet, &before), 0);
  mock.onReport = nullptr;
  GoOnline();
  turnTime = {};
  // So many, for as long as it waits, that most of the waits are hit.
  const pthread_t waiting = ::pthread_self();
  std::atomic<bool> waits{true};
  std::thread signals;
  onTurn = [&] {
    if (turns == 1) {
      signals = std::thread([&] {
        while (waits) ::pthread_kill(waiting, SIGUSR1);
      });
    }
    if (turns == 50) mock.Send({10, 11});
  };
  EXPECT_EQ(tls.GetID(), 10 * 256 + 11);
  EXPECT_GE(turns, 50);
  waits = false;
  if (signals.joinable()) signals.join();
  ASSERT_EQ(::sigaction(SIGUSR1, &before, nullptr), 0);
}

TEST_F(Transfer, AnswersOfAWrongLengthFail) {
  GoOnline();
  for (const std::size_t length : {std::size_t{1}, std::size_t{3}, std::size_t{64}}) {
    mock.onReport = [&](const Bytes&) { return std::vector<Bytes>{Bytes(length, 10)}; };
    EXPECT_EQ(tls.GetID(), 0) << length;
    EXPECT_FALSE(tls.StartPulse(1)) << length;
  }
  mock.AnswerWith(board);
  EXPECT_EQ(tls.GetSN(), "4B535401");
}

TEST_F(Transfer, AFailedWriteFailsTheCommandAndTheNextOneWorks) {
  GoOnline();
  for (const int error : {EPIPE, ETIMEDOUT, EIO}) {
    mock.writeError = error;
    EXPECT_EQ(tls.GetSN(), "NoSerialNumber");
    EXPECT_FALSE(tls.Reset());
    mock.writeError = 0;
    EXPECT_EQ(tls.GetSN(), "4B535401");
  }
  EXPECT_EQ(board.State().resets, 0U);
  agent->Refresh();
  EXPECT_THAT(events.lines, testing::Not(testing::Contains(testing::HasSubstr("closed"))));
}

TEST_F(Transfer, ABoardThatTakesNothingIsGivenUpAfterSixSecondsAndLeftAloneUntilItDoes) {
  GoOnline();
  mock.heldWrite = 1;
  EXPECT_EQ(tls.GetID(), 0);
  EXPECT_EQ(turns, 6);
  EXPECT_TRUE(tls.HasRefused());
  EXPECT_FALSE(tls.Reset()) << "on top of the one that stands";
  EXPECT_EQ(turns, 6);
  EXPECT_EQ(mock.Writes(), 1);
  mock.EndHeldWrite(ETIMEDOUT);
  // That takes a moment to come through.
  while (tls.GetSN() != "4B535401") EXPECT_EQ(turns, 6);
  EXPECT_EQ(mock.Writes(), 2);
  EXPECT_EQ(board.State().resets, 0U);
}

TEST_F(Transfer, ABoardThatIsLetGoInAWriteIsFreeWhenThatIsOver) {
  GoOnline();
  mock.heldWrite = 1;
  onTurn = [&] { agent->Stop(); };
  EXPECT_EQ(tls.GetID(), 0);
  EXPECT_EQ(turns, 1);
  EXPECT_EQ(agent->NumberOfInterfaces(), 0);
  EXPECT_TRUE(mock.IsAWriteHeld());
  EXPECT_TRUE(platform::hid::IsBoardLocked(mock.Node()));
  EXPECT_FALSE(agent->SearchAndOpen());
  mock.EndHeldWrite(ETIMEDOUT);
  mock.WaitUntilItIsFree();
  EXPECT_FALSE(platform::hid::IsBoardLocked(mock.Node()));
  EXPECT_TRUE(agent->SearchAndOpen());
}

TEST_F(Transfer, ACommandInsideAWaitIsRefusedAndSendsNothing) {
  mock.onReport = nullptr;
  GoOnline();
  int refused = 0;
  onTurn = [&] {
    if (!tls.Reset()) ++refused;
  };
  EXPECT_EQ(tls.GetID(), 0);
  // Three while it waits for the answer, and some while it asks on a busy machine.
  EXPECT_GE(turns, 3);
  EXPECT_EQ(refused, turns);
  EXPECT_EQ(mock.Writes(), 1);
}

}  // namespace
}  // namespace kestrin::rig
