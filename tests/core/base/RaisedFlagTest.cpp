// SPDX-License-Identifier: MIT
#include "core/base/RaisedFlag.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace kestrin::core::base {
namespace {

TEST(RaisedFlag, IsTrueWhileItLivesHoweverItsScopeIsLeft) {
  bool flag = false;
  {
    const RaisedFlag raised(flag);
    EXPECT_TRUE(flag);
  }
  EXPECT_FALSE(flag);
  try {
    const RaisedFlag raised(flag);
    throw std::runtime_error("out of here");
  } catch (const std::runtime_error&) {
    EXPECT_FALSE(flag);
  }
}

}  // namespace
}  // namespace kestrin::core::base
