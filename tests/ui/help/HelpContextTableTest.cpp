// SPDX-License-Identifier: MIT
#include "ui/help/HelpContextTable.h"

#include <gtest/gtest.h>

namespace kestrin::ui::help {
namespace {

using namespace std::string_literals;

// 1000 is 0x3E8. Two pairs: 1000 leads to offset 1, 1001 to offset 8.
const std::string kIvb = "\x10\0\0\0"s + "\xE8\x03\0\0\x01\0\0\0"s + "\xE9\x03\0\0\x08\0\0\0"s;
const std::string kStrings = "\0a.html\0b.html#x\0"s;

TEST(HelpContextTable, FindsThePlaceOfANumber) {
  const HelpContextTable table(kIvb, kStrings);
  EXPECT_EQ(table.PlaceOf(1000), "a.html");
  EXPECT_EQ(table.PlaceOf(1001), "b.html#x");
}

TEST(HelpContextTable, DoesNotKnowOtherNumbers) {
  const HelpContextTable table(kIvb, kStrings);
  EXPECT_EQ(table.PlaceOf(0), std::nullopt);
  EXPECT_EQ(table.PlaceOf(1002), std::nullopt);
  EXPECT_EQ(HelpContextTable().PlaceOf(1000), std::nullopt);
}

TEST(HelpContextTable, NumbersHaveAllThirtyTwoBits) {
  const HelpContextTable table("\x08\0\0\0\x01\x02\x03\xFF\x01\0\0\0"s, kStrings);
  EXPECT_EQ(table.PlaceOf(0xFF030201U), "a.html");
  EXPECT_EQ(table.PlaceOf(0x030201U), std::nullopt);
}

TEST(HelpContextTable, TableCutAnywhereGivesOnlyWholePairs) {
  for (std::size_t size = 0; size < kIvb.size(); ++size) {
    const HelpContextTable table(kIvb.substr(0, size), kStrings);
    EXPECT_EQ(table.PlaceOf(1000).has_value(), size >= 12) << size;
    EXPECT_EQ(table.PlaceOf(1001), std::nullopt) << size;
  }
}

TEST(HelpContextTable, PlaceBehindTheTextsIsNone) {
  for (const std::string& offset : {"\x11\0\0\0"s, "\xFF\xFF\xFF\xFF"s, "\0\0\0\x80"s}) {
    const HelpContextTable table("\x08\0\0\0\xE8\x03\0\0"s + offset, kStrings);
    EXPECT_EQ(table.PlaceOf(1000), std::nullopt);
  }
}

TEST(HelpContextTable, TextWithoutItsEndOrWithoutLettersIsNone) {
  EXPECT_EQ(HelpContextTable(kIvb, "\0a.htm"s).PlaceOf(1000), std::nullopt);
  EXPECT_EQ(HelpContextTable(kIvb, "\0\0"s).PlaceOf(1000), std::nullopt);
}

}  // namespace
}  // namespace kestrin::ui::help
