// SPDX-License-Identifier: MIT
#include "core/base/PathText.h"

#include <gtest/gtest.h>

namespace kestrin::core::base {
namespace {

TEST(PathText, TextSurvivesTheWayToAPathAndBack) {
  for (const char* text : {"", "boot.lsu", "/sounds of mine/boot.lsu",
                           "/gr\xC3\xBC\xC3\x9F"
                           "e/\xE2\x9A\x94.lsu",
                           "relative/../a.lsu"})
    EXPECT_EQ(TextOf(PathOf(text)), text);
}

TEST(PathText, AQuotedPathIsItsTextWithoutControlCharacters) {
  EXPECT_EQ(Quoted(std::filesystem::path("sounds/boot.lsu")), "\"sounds/boot.lsu\"");
  EXPECT_EQ(Quoted(std::filesystem::path("line\nbreak")), "\"line?break\"");
  // A text is no path, whatever it could become.
  EXPECT_EQ(Quoted(std::string("boot")), "\"boot\"");
}

#ifndef _WIN32
TEST(PathText, WherePathsAreBytesAnyByteSurvives) {
  const std::string text =
      "/latin/gr\xFC\xDF"
      "e.lsu";
  EXPECT_EQ(TextOf(PathOf(text)), text);
}
#endif

}  // namespace
}  // namespace kestrin::core::base
