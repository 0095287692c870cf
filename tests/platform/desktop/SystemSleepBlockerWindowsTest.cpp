// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <windows.h>

#include "platform/desktop/SystemSleepBlocker.h"

namespace kestrin::platform::desktop {
namespace {

/// What the system was told last: setting the state tells the one before.
EXECUTION_STATE Told() {
  const EXECUTION_STATE before = SetThreadExecutionState(ES_CONTINUOUS);
  SetThreadExecutionState(before);
  return before;
}

TEST(SystemSleepBlockerOnWindows, KeepsTheComputerAwakeUntilItIsToldOtherwise) {
  SetThreadExecutionState(ES_CONTINUOUS);
  SystemSleepBlocker blocker;
  EXPECT_EQ(Told() & ES_SYSTEM_REQUIRED, 0U);
  blocker.Block("Sounds go to the board");
  EXPECT_EQ(Told() & (ES_CONTINUOUS | ES_SYSTEM_REQUIRED), ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
  // Again, as one download follows the other.
  blocker.Block("Sounds go to the board");
  EXPECT_NE(Told() & ES_SYSTEM_REQUIRED, 0U);
  blocker.Unblock();
  EXPECT_EQ(Told() & ES_SYSTEM_REQUIRED, 0U);
}

}  // namespace
}  // namespace kestrin::platform::desktop
