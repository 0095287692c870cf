// SPDX-License-Identifier: MIT
#include "platform/hid/ReportBits.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrin::platform::hid {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(ReportBits, ReadsElementsOfAnyWidthAtAnyBit) {
  // Bits, lowest first: 0xB4 = 0010 1101, 0x5A = 0101 1010, 0xFF, 0x01
  const Bytes report{0xB4, 0x5A, 0xFF, 0x01};
  struct Case {
    std::size_t offset;
    std::size_t bits;
    std::uint32_t expected;
  };
  for (const Case& c : {Case{0, 8, 0xB4}, Case{8, 8, 0x5A}, Case{0, 1, 0}, Case{2, 1, 1}, Case{4, 8, 0xAB},
                        Case{0, 16, 0x5AB4}, Case{0, 32, 0x01FF5AB4}, Case{1, 3, 2}, Case{12, 12, 0xFF5}}) {
    EXPECT_EQ(GetBits(report, c.offset, c.bits), c.expected) << "offset " << c.offset << ", " << c.bits << " bits";
  }
}

TEST(ReportBits, WritesOnlyTheElementsOwnBits) {
  Bytes report(3, 0xFF);
  SetBits(report, 4, 9, 0);
  EXPECT_EQ(report, (Bytes{0x0F, 0xE0, 0xFF}));
  SetBits(report, 6, 3, 5);
  EXPECT_EQ(report, (Bytes{0x4F, 0xE1, 0xFF}));
}

TEST(ReportBits, DropsTheBitsOfAValueThatTheElementHasNoRoomFor) {
  Bytes report(2, 0);
  SetBits(report, 2, 3, 0xFF);
  EXPECT_EQ(report, (Bytes{0x1C, 0x00}));
}

TEST(ReportBits, ElementsWiderThanANumberReadTheirLowestBitsAndAreFilledUpWithZeros) {
  Bytes report(5, 0xFF);
  EXPECT_EQ(GetBits(report, 0, 40), 0xFFFFFFFFU);
  SetBits(report, 0, 40, 0x01020304);
  EXPECT_EQ(report, (Bytes{0x04, 0x03, 0x02, 0x01, 0x00}));
}

TEST(ReportBits, BitsBehindTheEndReadZeroAndAreNotWritten) {
  Bytes report{0x80};
  EXPECT_EQ(GetBits(report, 7, 4), 1U);
  EXPECT_EQ(GetBits(report, 800, 8), 0U);
  SetBits(report, 6, 8, 0);
  EXPECT_EQ(report, (Bytes{0x00}));
}

TEST(ReportBits, ExtendsTheSignOfAnElement) {
  EXPECT_EQ(SignExtend(0x7F, 8), 127);
  EXPECT_EQ(SignExtend(0x80, 8), -128);
  EXPECT_EQ(SignExtend(0x1, 1), -1);
  EXPECT_EQ(SignExtend(0xFFFFFFFF, 32), -1);
  EXPECT_EQ(SignExtend(5, 0), 5);
}

}  // namespace
}  // namespace kestrin::platform::hid
