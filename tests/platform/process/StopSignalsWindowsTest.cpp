// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <optional>

#include "platform/process/StopSignals.h"

namespace kestrin::platform::process {
namespace {

std::atomic<int> s_last = 0;

/// What a handler is told of an event that the console sends to this program; nothing where none can be sent.
std::optional<int> TakenFor(DWORD event) {
  s_last = 0;
  CatchStopSignals([](int signal) {
    s_last = signal;
    s_last.notify_all();
  });
  const BOOL sent = GenerateConsoleCtrlEvent(event, 0);
  if (sent != 0) s_last.wait(0);
  ReleaseStopSignals();
  return sent != 0 ? std::optional<int>(s_last) : std::nullopt;
}

/// A console of its own: an event goes to everybody at the same one, the program that started the tests among them.
class CatchStopSignals : public ::testing::Test {
 protected:
  void SetUp() override {
    FreeConsole();
    ASSERT_NE(AllocConsole(), 0) << "there is no console to be had";
  }
  void TearDown() override { FreeConsole(); }
};

TEST_F(CatchStopSignals, CtrlCInterrupts) { EXPECT_EQ(TakenFor(CTRL_C_EVENT), kInterrupt); }

TEST_F(CatchStopSignals, CtrlBreakTerminates) { EXPECT_EQ(TakenFor(CTRL_BREAK_EVENT), kTerminate); }

}  // namespace
}  // namespace kestrin::platform::process
