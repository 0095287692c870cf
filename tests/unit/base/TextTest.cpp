#include "base/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrin::base {
namespace {

using ::testing::ElementsAre;

TEST(Split, GivesOnePieceMoreThanThereAreSeparators) {
  EXPECT_THAT(Split("MOTION-3", "-"), ElementsAre("MOTION", "3"));
  EXPECT_THAT(Split("", "-"), ElementsAre(""));
  EXPECT_THAT(Split("abc", "-"), ElementsAre("abc"));
  EXPECT_THAT(Split("-a-", "-"), ElementsAre("", "a", ""));
  EXPECT_THAT(Split("a+Col=b+Col=c", "+Col="), ElementsAre("a", "b", "c"));
}

TEST(EqualsIgnoringCase, LooksAtLettersOnly) {
  EXPECT_TRUE(EqualsIgnoringCase("lsu", "LSU"));
  EXPECT_TRUE(EqualsIgnoringCase("", ""));
  EXPECT_FALSE(EqualsIgnoringCase("lsu", "lsux"));
  // "@" and "`" differ from each other as "A" and "a" do.
  EXPECT_FALSE(EqualsIgnoringCase("@", "`"));
}

TEST(LastPathPiece, StandsBehindEitherSeparator) {
  EXPECT_EQ(LastPathPiece("C:\\Sounds\\boot.lsu"), "boot.lsu");
  EXPECT_EQ(LastPathPiece("/home/me/boot.lsu"), "boot.lsu");
  EXPECT_EQ(LastPathPiece("/mnt\\boot.lsu"), "boot.lsu");
  EXPECT_EQ(LastPathPiece("C:\\Sounds/boot.lsu"), "boot.lsu");
  EXPECT_EQ(LastPathPiece("boot.lsu"), "boot.lsu");
  EXPECT_EQ(LastPathPiece("sounds/"), "");
}

}  // namespace
}  // namespace kestrin::base
