// SPDX-License-Identifier: MIT
// A board that takes nothing: the kernel holds what is written to it, and nothing ends that from outside. Here each
// such write stands until the test ends it, so whatever happens before does not wait for it.
#include <gmock/gmock.h>

#include <cerrno>
#include <csignal>
#include <memory>
#include <string>

#include "rig/ProgramFixture.h"

namespace kestrin::rig {
namespace {

using support::Arguments;
using support::Finished;
using support::Json;
using testing::Each;
using testing::HasSubstr;
using testing::StartsWith;

class HeldWrite : public ProgramFixture {
 protected:
  HeldWrite() { mock.Plug(); }

  /// Starts a command and returns when the device holds that write of it.
  [[nodiscard]] std::unique_ptr<support::ChildProcess> StartUntilHeld(int write, const Arguments& command) {
    mock.heldWrite = mock.Writes() + write;
    auto program = Start(command);
    mock.WaitUntilAWriteIsHeld();
    return program;
  }
  /// The device does not take the report that it holds, but all others.
  void Recover() {
    mock.EndHeldWrite(ETIMEDOUT);
    mock.WaitUntilItIsFree();
  }
};

TEST_F(HeldWrite, InfoGivesUpAfterOneReportThatIsNotTaken) {
  const auto info = StartUntilHeld(1, {"info"});
  mock.EndHeldWrite(ETIMEDOUT);
  const Finished finished = info->Wait();
  EXPECT_EQ(finished.code, 1);
  EXPECT_EQ(finished.errors,
            "kestrinctl: The board did not say what it is. Unplug it, plug it in again and repeat this.\n");
  // Neither another question nor a good-bye, each of which might be held again.
  EXPECT_EQ(mock.Writes(), 1);
  EXPECT_EQ(RunJson(0, {"info"})["serial"], "4B535401");
}

struct Stop {
  const char* name;
  int signal;
  int code;
};

constexpr Stop kStops[] = {{"CtrlC", SIGINT, 130}, {"Terminated", SIGTERM, 143}, {"HungUp", SIGHUP, 129}};

class HeldWriteStopped : public HeldWrite, public testing::WithParamInterface<Stop> {
 protected:
  /// Stops a command while the device holds that write of it.
  [[nodiscard]] Finished StopAt(int write, const Arguments& command) {
    const auto program = StartUntilHeld(write, command);
    program->Signal(GetParam().signal);
    Finished finished = program->Wait();
    EXPECT_EQ(finished.code, GetParam().code);
    EXPECT_TRUE(mock.IsAWriteHeld()) << "it was waited for";
    return finished;
  }
};

TEST_P(HeldWriteStopped, CommandsEndAtOnce) {
  struct Moment {
    Arguments command;
    /// 1 identity, 2 serial number, 3 what the command itself asks.
    int write;
  };
  const Moment moments[] = {{{"info"}, 1}, {{"info"}, 2}, {{"accel", "get"}, 3}, {{"verify", Configuration()}, 3}};
  for (const Moment& moment : moments) {
    SCOPED_TRACE(moment.command[0] + " " + std::to_string(moment.write));
    const Finished finished = StopAt(moment.write, moment.command);
    EXPECT_EQ(finished.errors, "kestrinctl: Stopped\n");
    const Finished next = Run({"info"});
    EXPECT_EQ(next.code, 1);
    EXPECT_EQ(next.errors, "kestrinctl: Another program is using this board. Close it and try again.\n");
    Recover();
    EXPECT_EQ(RunJson(0, {"info"})["serial"], "4B535401");
  }
}

TEST_P(HeldWriteStopped, ADownloadIsCancelledAndTheNextOneWorks) {
  // The first block of the first sound, behind identity, serial number, parameters, erase and parameters.
  const Finished finished = StopAt(6, {"download", Configuration()});
  EXPECT_THAT(finished.out, HasSubstr("Stopping ...\n"));
  EXPECT_THAT(finished.errors, StartsWith("kestrinctl: Canceled\n"));
  const auto front = board.Flash().first(512);
  EXPECT_THAT(Bytes(front.begin(), front.end()), Each(0xFF));
  Recover();
  EXPECT_EQ(RunJson(0, {"download", Configuration()})["outcome"], "success");
  EXPECT_TRUE(BoardHoldsTheSet());
}

INSTANTIATE_TEST_SUITE_P(Signals, HeldWriteStopped, testing::ValuesIn(kStops),
                         [](const auto& stop) { return stop.param.name; });

TEST_F(HeldWrite, AProgramThatIsKilledIsGoneAtOnceAndItsClaimWhenTheWriteIsOver) {
  const auto download = StartUntilHeld(6, {"download", Configuration()});
  download->Signal(SIGKILL);
  EXPECT_EQ(download->Wait().code, -SIGKILL);
  EXPECT_TRUE(mock.IsAWriteHeld());
  EXPECT_EQ(Run({"info"}).errors, "kestrinctl: Another program is using this board. Close it and try again.\n");
  Recover();
  EXPECT_EQ(RunJson(0, {"info"})["serial"], "4B535401");
}

}  // namespace
}  // namespace kestrin::rig
