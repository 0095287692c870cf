// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "platform/hid/BoardLock.h"

namespace kestrin::platform::hid {
namespace {

TEST(BoardLockOnWindows, OneProgramAtATimeHasABoard) {
  const std::string path = "\\\\?\\hid#vid_04d8&pid_fa37#7&\u00E5#{4d1e55b2}";
  EXPECT_FALSE(IsBoardLocked(path));
  EXPECT_FALSE(IsBoardOurs(path));
  BoardLock first = LockBoard(path);
  ASSERT_TRUE(first.lock);
  EXPECT_TRUE(IsBoardLocked(path));
  EXPECT_TRUE(IsBoardOurs(path));
  EXPECT_FALSE(IsBoardLocked(path + "2"));

  const BoardLock second = LockBoard("\\\\?\\HID#VID_04D8&PID_FA37#7&\u00E5#{4D1E55B2}");
  EXPECT_FALSE(second.lock);
  EXPECT_TRUE(second.heldByAnother) << "the case of the letters does not count";

  first.lock.reset();
  EXPECT_FALSE(IsBoardLocked(path));
  EXPECT_FALSE(IsBoardOurs(path));
  EXPECT_TRUE(LockBoard(path).lock);
}

}  // namespace
}  // namespace kestrin::platform::hid
