// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <optional>

#include "platform/process/StopSignals.h"

namespace kestrin::platform::process {
namespace {

std::atomic<int> s_last = 0;
HANDLE s_taken = nullptr;

/// What a handler is told of an event that the console sends to this program; nothing where none can be sent, 0 where
/// none arrives. A console that has just been made may lose events, so it is asked for another one.
std::optional<int> TakenFor(DWORD event) {
  constexpr DWORD kForOne = 2000;
  constexpr int kMost = 15;
  s_last = 0;
  s_taken = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  CatchStopSignals([](int signal) {
    s_last = signal;
    SetEvent(s_taken);
  });
  BOOL sent = TRUE;
  for (int tries = 0; tries < kMost && sent != 0; ++tries) {
    sent = GenerateConsoleCtrlEvent(event, 0);
    if (sent != 0 && WaitForSingleObject(s_taken, kForOne) == WAIT_OBJECT_0) break;
  }
  ReleaseStopSignals();
  CloseHandle(s_taken);
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
