// SPDX-License-Identifier: MIT
#include "core/led/Color.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>

namespace kestrin::core::led {
namespace {

const SystemColorLookup kNoPalette = [](std::int32_t number) -> Color {
  ADD_FAILURE() << "asked for system colour " << number;
  return 0;
};

void ExpectComponents(const Components& found, int red, int green, int blue) {
  EXPECT_EQ(found.Red, red);
  EXPECT_EQ(found.Green, green);
  EXPECT_EQ(found.Blue, blue);
}

TEST(SysToRGB, TakesAColourValueApartWithoutAskingThePalette) {
  ExpectComponents(SysToRGB(0x0080FF, kNoPalette), 255, 128, 0);
  ExpectComponents(SysToRGB(0, kNoPalette), 0, 0, 0);
  ExpectComponents(SysToRGB(0xFFFFFF, kNoPalette), 255, 255, 255);
  ExpectComponents(SysToRGB(0x010203, kNoPalette), 3, 2, 1);
}

TEST(SysToRGB, IgnoresTheTopByteOfAColourValue) { ExpectComponents(SysToRGB(0x7F010203, kNoPalette), 3, 2, 1); }

TEST(SysToRGB, NeedsNoPaletteForAColourValue) { ExpectComponents(SysToRGB(0x0000FF, {}), 255, 0, 0); }

TEST(SysToRGB, LooksANegativeValueUpByItsNumberWithoutBit31) {
  std::int32_t asked = -1;
  const SystemColorLookup palette = [&](std::int32_t number) -> Color {
    asked = number;
    return 0x332211;
  };
  ExpectComponents(SysToRGB(static_cast<std::int32_t>(0x8000000Fu), palette), 0x11, 0x22, 0x33);
  EXPECT_EQ(asked, 15);
  ExpectComponents(SysToRGB(std::numeric_limits<std::int32_t>::min(), palette), 0x11, 0x22, 0x33);
  EXPECT_EQ(asked, 0);
  ExpectComponents(SysToRGB(-1, palette), 0x11, 0x22, 0x33);
  EXPECT_EQ(asked, 0x7FFFFFFF);
}

TEST(SysToRGB, KeepsComponentsInRangeWhenThePaletteAnswersWithTheTopBitSet) {
  const auto answer = [](std::int32_t) { return static_cast<Color>(0xFF010203u); };
  ExpectComponents(SysToRGB(-5, answer), 3, 2, 1);
}

TEST(RGBToSys, PutsRedIntoTheLowestByte) {
  EXPECT_EQ(RGBToSys(255, 128, 0), 0x0080FF);
  EXPECT_EQ(RGBToSys(0, 0, 0), 0);
  EXPECT_EQ(RGBToSys(1, 2, 3), 0x030201);
  EXPECT_EQ(RGBToSys(255, 255, 255), 0xFFFFFF);
}

TEST(RGBToSys, ReportsAValueBeyond32Bits) { EXPECT_THROW((void)RGBToSys(0, 32767, 32767), std::overflow_error); }

TEST(RGBToSys, IsTheInverseOfSysToRGB) {
  for (const Color color : {kWhite, kRed, kGreen, kBlue, kAmber, 0x123456}) {
    const Components parts = SysToRGB(color, kNoPalette);
    EXPECT_EQ(RGBToSys(parts.Red, parts.Green, parts.Blue), color);
  }
}

}  // namespace
}  // namespace kestrin::core::led
