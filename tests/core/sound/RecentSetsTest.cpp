// SPDX-License-Identifier: MIT
#include "core/sound/RecentSets.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrin::core::sound {
namespace {

using Paths = std::vector<std::filesystem::path>;

TEST(RecentSetsTest, TheLatestComesFirst) {
  RecentSets recent;
  recent.Use("a");
  recent.Use("b");
  EXPECT_EQ(recent.Paths(), (Paths{"b", "a"}));
  recent.Use("a");
  EXPECT_EQ(recent.Paths(), (Paths{"a", "b"}));
}

TEST(RecentSetsTest, TheNinthIsForgotten) {
  RecentSets recent;
  for (int number = 1; number <= 9; ++number) recent.Use(std::to_string(number));
  EXPECT_EQ(recent.Paths(), (Paths{"9", "8", "7", "6", "5", "4", "3", "2"}));
}

TEST(RecentSetsTest, WhatIsStoredComesBackInItsOrder) {
  EXPECT_EQ(RecentSets(Paths{"a", "b", "", "a", "c"}).Paths(), (Paths{"a", "b", "c"}));
  EXPECT_EQ(RecentSets(Paths{"1", "2", "3", "4", "5", "6", "7", "8", "9"}).Paths(),
            (Paths{"1", "2", "3", "4", "5", "6", "7", "8"}));
}

TEST(RecentSetsTest, ASetThatIsGoneCanBeForgotten) {
  RecentSets recent(Paths{"a", "b"});
  recent.Forget("a");
  recent.Forget("unknown");
  EXPECT_EQ(recent.Paths(), Paths{"b"});
}

}  // namespace
}  // namespace kestrin::core::sound
