// SPDX-License-Identifier: MIT
#include "core/update/PlainName.h"

#include <gtest/gtest.h>

#include <string>

#include "core/update/HostileNames.h"

namespace kestrin::core::update {
namespace {

TEST(PlainNameTest, HostileNamesAreNoPlainOnes) {
  EXPECT_GE(support::HostileNames().size(), 40U);
  for (const std::string& name : support::HostileNames()) EXPECT_FALSE(IsPlainName(name)) << name;
  EXPECT_FALSE(IsPlainName(""));
}

TEST(PlainNameTest, OrdinaryNamesArePlain) {
  for (const char* const name : {"A",
                                 "Night Watch",
                                 "boot.lsu",
                                 "BOOT.LSU",
                                 "Font (2) - more!",
                                 "a..b",
                                 "x.y.lsu",
                                 "-",
                                 "~",
                                 "'quoted'",
                                 "Gr\xC3\xBC\xC3\x9F"
                                 "e.lsu",
                                 "\xE5\xA3\xB0.lsu",
                                 "\xC2\xA0x",
                                 "CONSOLE",
                                 "COM",
                                 "COM10.lsu",
                                 "COMA",
                                 "LPT.lsu",
                                 "XCON",
                                 "nulls.lsu",
                                 "aux2.lsu",
                                 "con-1",
                                 "tmp",
                                 "fnt",
                                 "a;b",
                                 "$HOME",
                                 "`x`",
                                 "a,b",
                                 "[x]{y}",
                                 "#1@home^2"})
    EXPECT_TRUE(IsPlainName(name)) << name;
  EXPECT_TRUE(IsPlainName(std::string(200, 'x')));
}

TEST(PlainNameTest, AFontMayNotBeCalledLikeTheFilesBesideTheFonts) {
  for (const char* const name : {"tmp", "fnt", "descriptor", "TMP", "Descriptor"}) {
    EXPECT_TRUE(IsPlainName(name)) << name;
    EXPECT_FALSE(IsFontName(name)) << name;
  }
  for (const char* const name : {"tmp2", "fonts", "Ember"}) EXPECT_TRUE(IsFontName(name)) << name;
  for (const std::string& name : support::HostileNames()) EXPECT_FALSE(IsFontName(name)) << name;
  EXPECT_FALSE(IsFontName(""));
}

TEST(PlainNameTest, ANameIsShownInOneHarmlessLine) {
  EXPECT_EQ(ShownName("../x"), "../x");
  EXPECT_EQ(ShownName("a\r\nb\x1B[2J\x7F"), "a??b?[2J?");
  // U+009B begins a terminal's commands like ESC [ does; U+0080 and U+009F are the ends of its kind, U+00A0 is none.
  EXPECT_EQ(ShownName("a\xC2\x9B"
                      "2Jb\xC2\x80\xC2\x9F\xC2\xA0\xC3\x80"),
            "a?2Jb??\xC2\xA0\xC3\x80");
  EXPECT_EQ(ShownName(std::string(60, 'y')), std::string(60, 'y'));
  EXPECT_EQ(ShownName(std::string(61, 'y')), std::string(60, 'y') + "...");
  // 59 letters and one character of three bytes, of which the limit would leave one.
  EXPECT_EQ(ShownName(std::string(59, 'y') + "\xE5\xA3\xB0z"), std::string(59, 'y') + "...");
}

}  // namespace
}  // namespace kestrin::core::update
