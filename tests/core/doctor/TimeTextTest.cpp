// SPDX-License-Identifier: MIT
#include "core/doctor/TimeText.h"

#include <gtest/gtest.h>

#include "core/doctor/HexText.h"

namespace kestrin::core::doctor {
namespace {

TEST(TimeText, IsAsExactAsAPersonWantsToKnow) {
  struct {
    std::int64_t microseconds;
    const char* text;
  } const rows[] = {{0, "less than 1 ms"}, {499, "less than 1 ms"}, {500, "1 ms"},       {40200, "40 ms"},
                    {99499, "99 ms"},      {99500, "0.1 s"},        {705200, "0.7 s"},   {749499, "0.7 s"},
                    {750000, "0.8 s"},     {960000, "1.0 s"},       {60049000, "60.0 s"}};
  for (const auto& row : rows) EXPECT_EQ(TimeText(std::chrono::microseconds(row.microseconds)), row.text);
}

TEST(TimeText, TellsAnAgeInTheLargestUnitThatFits) {
  struct {
    int seconds;
    const char* text;
  } const rows[] = {{0, "0 seconds"},     {1, "1 second"},  {59, "59 seconds"},  {60, "1 minute"}, {119, "1 minute"},
                    {3599, "59 minutes"}, {3600, "1 hour"}, {86399, "23 hours"}, {86400, "1 day"}, {172800, "2 days"}};
  for (const auto& row : rows) EXPECT_EQ(AgeText(std::chrono::seconds(row.seconds)), row.text);
}

TEST(HexText, WritesTwoDigitsForEachByte) {
  const std::vector<std::uint8_t> bytes{0x00, 0x4B, 0xFF};
  EXPECT_EQ(HexText(bytes, " "), "00 4B FF");
  EXPECT_EQ(HexText(bytes, ""), "004BFF");
  EXPECT_EQ(HexText({}, " "), "");
}

}  // namespace
}  // namespace kestrin::core::doctor
