// SPDX-License-Identifier: MIT
#include "core/base/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrin::core::base {
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

TEST(Shown, MakesControlCharactersHarmless) {
  struct Case {
    std::string_view text;
    std::string_view shown;
  };
  using namespace std::string_view_literals;
  for (const Case& row : {Case{"", ""},
                          {"/home/me/my saber.lscfg", "/home/me/my saber.lscfg"},
                          {"a\x1B[31mb\x1B]0;title\x07", "a?[31mb?]0;title?"},
                          {"\0\x01\x1F\x20\x7E\x7F"sv, "???\x20\x7E?"},
                          {"line\r\nbreak\ttab", "line??break?tab"},
                          // U+0080 and U+009F are the ends of the late control characters, U+00A0 and U+00BF are none.
                          {"\u0080\u009B\u009F\u00A0\u00BF", "???\u00A0\u00BF"},
                          {"gr\u00FC\u00DFe \u58F0 \U0001F5E1", "gr\u00FC\u00DFe \u58F0 \U0001F5E1"},
                          // No UTF-8: what a terminal of one byte a character takes for commands goes, letters stay.
                          {"\x9B[2J\xE4\x80", "?[2J\xE4?"},
                          {"\xC2", "\xC2"},
                          {"\xC0\x9B\xE0\x9B\xF0\x9F\x97", "\xC0?\xE0?\xF0??"},
                          {"\xE5\xA3\x1B", "\xE5\xA3?"}})
    EXPECT_EQ(Shown(row.text), row.shown) << row.text;
}

TEST(Shown, OfSeveralLinesKeepsTheLines) {
  EXPECT_EQ(ShownLines("one\ntwo\r\n\x1B[2Jthree\n"), "one\ntwo?\n?[2Jthree\n");
}

TEST(Quoted, StandsBetweenQuotationMarksWithoutControlCharacters) {
  EXPECT_EQ(Quoted("boot"), "\"boot\"");
  EXPECT_EQ(Quoted(""), "\"\"");
  EXPECT_EQ(Quoted("a\x1B[2J\n"), "\"a?[2J?\"");
}

TEST(Width, CountsCharacters) {
  EXPECT_EQ(Width(""), 0U);
  EXPECT_EQ(Width("gr\u00FC\u00DFe"), 5U);
  EXPECT_EQ(FirstCharacters("gr\u00FC\u00DFe", 3), "gr\u00FC");
  EXPECT_EQ(FirstCharacters("gr\u00FC\u00DFe", 0), "");
  EXPECT_EQ(FirstCharacters("gr\u00FC\u00DFe", 9), "gr\u00FC\u00DFe");
}

}  // namespace
}  // namespace kestrin::core::base
