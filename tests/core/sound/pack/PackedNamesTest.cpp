// SPDX-License-Identifier: MIT
#include "sound/pack/PackedNames.h"

#include <gtest/gtest.h>

#include "base/Text.h"
#include "update/PlainName.h"

namespace kestrin::core::sound {
namespace {

TEST(PackedNames, OrdinaryNamesStay) {
  PackedNames names;
  EXPECT_EQ(names.Take("swing 1.lsu", ".lsu"), "swing 1.lsu");
  EXPECT_EQ(names.Take("Boot.LSU", ".lsu"), "Boot.lsu");
  EXPECT_EQ(names.Take("h\xC3\xBCm.low.lsu", ".lsu"), "h\xC3\xBCm.low.lsu");
}

TEST(PackedNames, NoTwoAreTheSameInAnyLetterCase) {
  PackedNames names;
  EXPECT_EQ(names.Take("hum.lsu", ".lsu"), "hum.lsu");
  EXPECT_EQ(names.Take("HUM.lsu", ".lsu"), "HUM 2.lsu");
  EXPECT_EQ(names.Take("hum 3.lsu", ".lsu"), "hum 3.lsu");
  EXPECT_EQ(names.Take("hum.lsu", ".lsu"), "hum 4.lsu");
  EXPECT_EQ(names.Take("hum.lscfg", ".lscfg"), "hum.lscfg") << "another ending, another name";
}

TEST(PackedNames, WhatSomeSystemDoesNotTakeBecomesPlain) {
  const std::pair<std::string, std::string> kWishes[] = {
      {"a:b?.lsu", "a_b_"}, {"a\\b/c.lsu", "a_b_c"},    {"NUL.lsu", "_NUL"}, {"com1.x.lsu", "_com1.x"},
      {" x. .lsu", "x"},    {"a\nb.lsu", "a_b"},        {"..lsu", "sound"},  {"", "sound"},
      {"...", "sound"},     {"50% & +.lsu", "50_ _ _"}, {".lsu", "lsu"},     {"\xFF\xFE.lsu", "__"},
      {"a\xC3.lsu", "a_"}};
  for (const auto& [wish, plain] : kWishes) EXPECT_EQ(PackedNames::Plain(wish), plain) << base::Shown(wish);
}

TEST(PackedNames, LongNamesAreCutBetweenCharacters) {
  std::string wish;
  for (int i = 0; i < 100; ++i) wish += "\xF0\x9F\x98\x80";
  PackedNames names;
  const std::string first = names.Take(wish + ".lsu", ".lsu");
  EXPECT_EQ(first.size(), 45U * 4 + 4);
  const std::string second = names.Take(wish + "x.lsu", ".lsu");
  EXPECT_NE(first, second);
  EXPECT_LE(second.size(), 200U);
}

TEST(PackedNames, EveryNameSuitsAFontServer) {
  for (int byte = 0; byte < 256; ++byte)
    for (const std::string& wish :
         {std::string(1, static_cast<char>(byte)), "a" + std::string(1, static_cast<char>(byte)) + "b",
          std::string(300, static_cast<char>(byte)), "aux" + std::string(1, static_cast<char>(byte))}) {
      PackedNames names;
      EXPECT_TRUE(update::IsPlainName(names.Take(wish, ".lsu"))) << byte;
      EXPECT_TRUE(update::IsPlainName(PackedNames::Plain(wish))) << byte;
    }
}

}  // namespace
}  // namespace kestrin::core::sound
