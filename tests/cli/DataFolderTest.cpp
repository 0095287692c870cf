// SPDX-License-Identifier: MIT
#include "platform/desktop/DataFolder.h"

#include <gtest/gtest.h>
#include <stdlib.h>

namespace kestrin::platform::desktop {
namespace {

#if !defined(__APPLE__)
TEST(DataFolder, FollowsTheDataHome) {
  setenv("HOME", "/home/somebody", 1);
  setenv("XDG_DATA_HOME", "/data of mine", 1);
  EXPECT_EQ(DataFolder(), "/data of mine/kestrin");
}

TEST(DataFolder, StandsInTheHomeWithoutOne) {
  setenv("HOME", "/home/somebody", 1);
  unsetenv("XDG_DATA_HOME");
  EXPECT_EQ(DataFolder(), "/home/somebody/.local/share/kestrin");
}

TEST(DataFolder, PassesOverADataHomeThatDependsOnWhereOneStands) {
  setenv("HOME", "/home/somebody", 1);
  for (const char* relative : {"", "data"}) {
    setenv("XDG_DATA_HOME", relative, 1);
    EXPECT_EQ(DataFolder(), "/home/somebody/.local/share/kestrin");
  }
}
#endif

TEST(DataFolder, IsUnknownWithoutAHome) {
  unsetenv("HOME");
  unsetenv("XDG_DATA_HOME");
  EXPECT_TRUE(DataFolder().empty());
}

}  // namespace
}  // namespace kestrin::platform::desktop
