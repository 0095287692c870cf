// SPDX-License-Identifier: MIT
#include "core/base/Bytes.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace kestrin::core::base {
namespace {

TEST(ExtractByte, GivesTheBytesOfTheLittleEndianImageAndZeroBeyond) {
  EXPECT_EQ(ExtractByte(0x11223344, 0), 0x44);
  EXPECT_EQ(ExtractByte(0x11223344, 1), 0x33);
  EXPECT_EQ(ExtractByte(0x11223344, 2), 0x22);
  EXPECT_EQ(ExtractByte(0x11223344, 3), 0x11);
  EXPECT_EQ(ExtractByte(0x11223344, 4), 0);
  EXPECT_EQ(ExtractByte(0x11223344, -1), 0);
}

TEST(BigEndian, WritesMostSignificantByteFirst) {
  std::array<std::uint8_t, 2> two{};
  PutBig16(two, 0x1025);
  EXPECT_EQ(two, (std::array<std::uint8_t, 2>{0x10, 0x25}));
  std::array<std::uint8_t, 3> three{};
  PutBig24(three, 0x010203);
  EXPECT_EQ(three, (std::array<std::uint8_t, 3>{1, 2, 3}));
}

TEST(BigEndian, ReadsWhatItWrote) {
  EXPECT_EQ(GetBig16(std::array<std::uint8_t, 2>{0x10, 0x25}), 4133);
  EXPECT_EQ(GetBig24(std::array<std::uint8_t, 3>{0xFF, 0x00, 0x01}), 0xFF0001u);
}

TEST(ByteSum, IsTheSumModulo65536) {
  EXPECT_EQ(ByteSum({}), 0);
  EXPECT_EQ(ByteSum(std::array<std::uint8_t, 3>{255, 255, 2}), 512);
  // 258 bytes of 255 sum to 65790, which is 254 above 65536.
  EXPECT_EQ(ByteSum(std::vector<std::uint8_t>(258, 255)), 254);
  // A block may be longer than 32,768 bytes: 40,000 ones.
  EXPECT_EQ(ByteSum(std::vector<std::uint8_t>(40000, 1)), 40000);
  // 2^24 + 2^17 bytes of 255 overflow 32 bits on the way: (16777216 + 131072) * 255 is a multiple of 65536.
  EXPECT_EQ(ByteSum(std::vector<std::uint8_t>(16777216 + 131072, 255)), 0);
}

}  // namespace
}  // namespace kestrin::core::base
