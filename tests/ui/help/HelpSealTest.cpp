// SPDX-License-Identifier: MIT
#include "ui/help/HelpSeal.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrin::ui::help {
namespace {

using namespace std::string_literals;

/// CRC-32 bit by bit, without a table.
std::uint32_t Crc32(const std::string& bytes) {
  std::uint32_t crc = 0xFFFFFFFFU;
  for (const char byte : bytes) {
    for (int bit = 0; bit < 8; ++bit) {
      const std::uint32_t input = static_cast<std::uint8_t>(byte) >> bit & 1U;
      crc = (crc & 1U) != input ? crc >> 1 ^ 0xEDB88320U : crc >> 1;
    }
  }
  return ~crc;
}

std::string Word(std::uint32_t number) {
  std::string bytes;
  for (int byte = 0; byte < 4; ++byte) bytes += static_cast<char>(number >> 8 * byte & 0xFF);
  return bytes;
}

const std::string kFront = "ITSF0123456789ab";
const std::string kRest = "the rest of the file";

TEST(HelpSeal, IsTheChecksumWithItsOwnPlaceTakenAsZero) {
  // The published check value of this checksum.
  ASSERT_EQ(Crc32("123456789"), 0xCBF43926U);
  const std::uint32_t seal = Crc32(kFront + "\0\0\0\0"s + kRest);
  EXPECT_EQ(HelpSealOf(kFront + "\0\0\0\0"s + kRest), seal);
  EXPECT_EQ(HelpSealOf(kFront + "wxyz" + kRest), seal);
  EXPECT_TRUE(HasValidHelpSeal(kFront + Word(seal) + kRest));
  EXPECT_FALSE(HasValidHelpSeal(kFront + Word(seal + 1) + kRest));
}

TEST(HelpSeal, FileOfAnotherKindHasNone) {
  const std::string other = "ITSX0123456789ab";
  EXPECT_FALSE(HasValidHelpSeal(other + Word(Crc32(other + "\0\0\0\0"s + kRest)) + kRest));
}

TEST(HelpSeal, FileTooShortForOneHasNone) {
  for (std::size_t size = 0; size < 20; ++size) EXPECT_FALSE(HasValidHelpSeal((kFront + "wxyz").substr(0, size)));
}

}  // namespace
}  // namespace kestrin::ui::help
