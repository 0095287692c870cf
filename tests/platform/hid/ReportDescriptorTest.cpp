// SPDX-License-Identifier: MIT
#include "platform/hid/ReportDescriptor.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/BoardDescriptors.h"

namespace kestrin::platform::hid {
namespace {

using core::device::ReportType;
using Bytes = std::vector<std::uint8_t>;

ReportDescriptor Read(const Bytes& bytes) {
  auto descriptor = ReportDescriptor::Read(bytes);
  EXPECT_TRUE(descriptor) << descriptor.Text();
  return *std::move(descriptor);
}

/// One field of 8 bits and one element of usage 1 on the vendor page, with items in front of it.
ReportDescriptor ReadField(const Bytes& before, const Bytes& main = {0x81, 0x02}) {
  Bytes bytes{0x06, 0x00, 0xFF, 0x75, 0x08, 0x95, 0x01, 0x09, 0x01};
  bytes.insert(bytes.end(), before.begin(), before.end());
  bytes.insert(bytes.end(), main.begin(), main.end());
  return Read(bytes);
}

TEST(ReportDescriptor, ReadsTheBoardsTwoReports) {
  const ReportDescriptor board = Read(support::BoardDescriptor());
  ASSERT_EQ(board.Reports().size(), 2U);
  EXPECT_EQ(board.Reports()[0].type, ReportType::Output);
  EXPECT_EQ(board.Reports()[0].Bytes(), 1028U);
  EXPECT_EQ(board.Reports()[1].type, ReportType::Input);
  EXPECT_EQ(board.Reports()[1].Bytes(), 2U);
  EXPECT_FALSE(board.UsesReportIds());
  EXPECT_EQ(board.LongestReport(ReportType::Output), 1028U);
  EXPECT_EQ(board.LongestReport(ReportType::Input), 2U);
  EXPECT_EQ(board.LongestReport(ReportType::Feature), 0U);

  ASSERT_EQ(board.Variables().size(), 2U);
  const DescriptorVariable& command = board.Variables()[0];
  EXPECT_EQ(command.report, 0U);
  EXPECT_EQ(command.count, 1028U);
  EXPECT_EQ(command.bitOffset, 0U);
  EXPECT_EQ(command.attributes.SizeInBits, 8);
  EXPECT_EQ(command.attributes.LogicalMinimum, 0);
  EXPECT_EQ(command.attributes.LogicalMaximum, 255);
  EXPECT_EQ(command.attributes.PhysicalMinimum, 0);
  EXPECT_EQ(command.attributes.PhysicalMaximum, 255);
  EXPECT_FALSE(command.attributes.IsButton);
  EXPECT_EQ(board.Variables()[1].report, 1U);
  EXPECT_EQ(board.Variables()[1].count, 2U);
}

TEST(ReportDescriptor, FindsTheBoardsVariablesByTypeUsageAndPage) {
  const ReportDescriptor board = Read(support::BoardDescriptor());
  EXPECT_EQ(board.Find(ReportType::Output, 1, 0xFF00), 0);
  EXPECT_EQ(board.Find(ReportType::Input, 2, 0xFF00), 1);
  EXPECT_EQ(board.Find(ReportType::Input, 1, 0xFF00), -1);
  EXPECT_EQ(board.Find(ReportType::Output, 2, 0xFF00), -1);
  EXPECT_EQ(board.Find(ReportType::Output, 1, 0xFF01), -1);
  EXPECT_EQ(board.Find(ReportType::Feature, 1, 0xFF00), -1);
}

TEST(ReportDescriptor, KeepsReportsOfDifferentIdsApart) {
  const ReportDescriptor board = Read(support::NumberedBoardDescriptor());
  EXPECT_TRUE(board.UsesReportIds());
  ASSERT_EQ(board.Reports().size(), 3U);
  EXPECT_EQ(board.Reports()[0].id, 1);
  EXPECT_EQ(board.Reports()[0].Bytes(), 1028U);
  EXPECT_EQ(board.Reports()[1].id, 2);
  EXPECT_EQ(board.Reports()[1].Bytes(), 2U);
  EXPECT_EQ(board.Reports()[2].id, 3);
  EXPECT_EQ(board.Reports()[2].Bytes(), 4U);
  EXPECT_EQ(board.LongestReport(ReportType::Input), 4U);
}

TEST(ReportDescriptor, GoesOnWithAReportWhoseIdComesAgain) {
  const ReportDescriptor read = Read({0x06, 0x00, 0xFF, 0x75, 0x08, 0x95, 0x01,  // page, 8 bits, 1 element
                                      0x85, 0x01, 0x09, 0x01, 0x81, 0x02,        // id 1, usage 1, input
                                      0x85, 0x02, 0x09, 0x02, 0x81, 0x02,        // id 2, usage 2, input
                                      0x85, 0x01, 0x09, 0x03, 0x81, 0x02});      // id 1, usage 3, input
  ASSERT_EQ(read.Reports().size(), 2U);
  EXPECT_EQ(read.Reports()[0].Bytes(), 2U);
  ASSERT_EQ(read.Variables().size(), 3U);
  EXPECT_EQ(read.Variables()[2].report, 0U);
  EXPECT_EQ(read.Variables()[2].bitOffset, 8U);
}

// --- The flags of a main item ---

struct FlagCase {
  const char* name;
  std::uint8_t low;
  std::uint8_t high;
  bool core::device::VariableAttributes::*attribute;
  bool expected;
};

TEST(ReportDescriptor, ReadsEveryFlagOfAMainItem) {
  using A = core::device::VariableAttributes;
  const FlagCase cases[] = {
      {"array", 0x00, 0x00, &A::ArrayNotVariable, true},
      {"variable", 0x02, 0x00, &A::ArrayNotVariable, false},
      {"absolute", 0x02, 0x00, &A::AbsoluteNotRelative, true},
      {"relative", 0x06, 0x00, &A::AbsoluteNotRelative, false},
      {"no wrap", 0x02, 0x00, &A::NoWrap, true},
      {"wrap", 0x0A, 0x00, &A::NoWrap, false},
      {"linear", 0x02, 0x00, &A::Linear, true},
      {"not linear", 0x12, 0x00, &A::Linear, false},
      {"preferred state", 0x02, 0x00, &A::NoPrefState, false},
      {"no preferred state", 0x22, 0x00, &A::NoPrefState, true},
      {"no null position", 0x02, 0x00, &A::HasNullState, false},
      {"null state", 0x42, 0x00, &A::HasNullState, true},
      {"not volatile", 0x02, 0x00, &A::Volatile, false},
      {"volatile", 0x82, 0x00, &A::Volatile, true},
      {"bit field", 0x02, 0x00, &A::BitsNotBuffer, true},
      {"buffered bytes", 0x02, 0x01, &A::BitsNotBuffer, false},
  };
  for (const FlagCase& c : cases) {
    const ReportDescriptor read = ReadField({}, {0x92, c.low, c.high});  // Output with two bytes of flags
    ASSERT_EQ(read.Variables().size(), 1U) << c.name;
    EXPECT_EQ(read.Variables()[0].attributes.*c.attribute, c.expected) << c.name;
  }
}

TEST(ReportDescriptor, TheVolatileBitIsReservedInInputItems) {
  EXPECT_FALSE(ReadField({}, {0x82, 0x82, 0x00}).Variables()[0].attributes.Volatile);
  EXPECT_TRUE(ReadField({}, {0xB2, 0x82, 0x00}).Variables()[0].attributes.Volatile);  // Feature
}

TEST(ReportDescriptor, AFieldIsAButtonWhenItIsOneBitWideOrOnTheButtonPage) {
  EXPECT_FALSE(ReadField({}).Variables()[0].attributes.IsButton);
  EXPECT_TRUE(ReadField({0x75, 0x01}).Variables()[0].attributes.IsButton);
  EXPECT_TRUE(ReadField({0x05, 0x09}).Variables()[0].attributes.IsButton);
}

TEST(ReportDescriptor, EachMainItemMakesAReportOfItsType) {
  EXPECT_EQ(ReadField({}, {0x81, 0x02}).Reports()[0].type, ReportType::Input);
  EXPECT_EQ(ReadField({}, {0x91, 0x02}).Reports()[0].type, ReportType::Output);
  EXPECT_EQ(ReadField({}, {0xB1, 0x02}).Reports()[0].type, ReportType::Feature);
}

TEST(ReportDescriptor, ConstantFieldsTakeSpaceButAreNoVariables) {
  const ReportDescriptor read = Read({0x05, 0x09, 0x19, 0x01, 0x29, 0x03,  // buttons 1 .. 3
                                      0x75, 0x01, 0x95, 0x03, 0x81, 0x02,  // 3 x 1 bit, input
                                      0x95, 0x05, 0x81, 0x03,              // 5 x 1 bit, constant
                                      0x05, 0x01, 0x09, 0x30,              // generic desktop, X
                                      0x75, 0x08, 0x95, 0x01, 0x81, 0x06});
  ASSERT_EQ(read.Variables().size(), 4U);
  EXPECT_EQ(read.Variables()[3].bitOffset, 8U);
  EXPECT_EQ(read.Reports()[0].bits, 16U);
}

TEST(ReportDescriptor, DataWithoutAUsageTakesSpaceButIsNoVariable) {
  const ReportDescriptor read = Read({0x06, 0x00, 0xFF, 0x75, 0x08, 0x95, 0x04, 0x81, 0x02});
  EXPECT_TRUE(read.Variables().empty());
  EXPECT_EQ(read.Reports()[0].Bytes(), 4U);
}

TEST(ReportDescriptor, FieldsOfNoSizeOrNoCountAreNoVariables) {
  EXPECT_TRUE(ReadField({0x95, 0x00}).Variables().empty());
  EXPECT_TRUE(ReadField({0x75, 0x00}).Variables().empty());
}

// --- Ranges ---

struct RangeCase {
  const char* name;
  Bytes items;
  std::int32_t minimum;
  std::int32_t maximum;
};

TEST(ReportDescriptor, ReadsLogicalRangesWithTheirSigns) {
  const std::vector<RangeCase> cases = {
      {"no data means 0", {0x14, 0x24}, 0, 0},
      {"one byte behind 0 is unsigned", {0x15, 0x00, 0x25, 0xFF}, 0, 255},
      {"two bytes", {0x15, 0x00, 0x26, 0xFF, 0x00}, 0, 255},
      {"two bytes behind 0 are unsigned", {0x15, 0x00, 0x26, 0xFF, 0xFF}, 0, 65535},
      {"negative minimum", {0x15, 0x81, 0x25, 0x7F}, -127, 127},
      {"negative maximum", {0x15, 0x80, 0x25, 0xFF}, -128, -1},
      {"two negative bytes", {0x16, 0x00, 0x80, 0x26, 0xFF, 0x7F}, -32768, 32767},
      {"four bytes", {0x17, 0x00, 0x00, 0x00, 0x80, 0x27, 0xFF, 0xFF, 0xFF, 0x7F}, -2147483647 - 1, 2147483647},
      {"more than 31 bits", {0x15, 0x00, 0x27, 0xFF, 0xFF, 0xFF, 0xFF}, 0, 2147483647},
  };
  for (const RangeCase& c : cases) {
    const ReportDescriptor read = ReadField(c.items);
    EXPECT_EQ(read.Variables()[0].attributes.LogicalMinimum, c.minimum) << c.name;
    EXPECT_EQ(read.Variables()[0].attributes.LogicalMaximum, c.maximum) << c.name;
  }
}

TEST(ReportDescriptor, ReadsPhysicalRangesAndTakesTheLogicalOneForNone) {
  const std::vector<RangeCase> cases = {
      {"absent", {0x15, 0x81, 0x25, 0x7F}, -127, 127},
      {"0 .. 0", {0x15, 0x00, 0x25, 0x64, 0x35, 0x00, 0x45, 0x00}, 0, 100},
      {"given", {0x15, 0x00, 0x25, 0x64, 0x35, 0x00, 0x46, 0x3B, 0x01}, 0, 315},
      {"negative", {0x15, 0x00, 0x25, 0x64, 0x36, 0x18, 0xFC, 0x46, 0xE8, 0x03}, -1000, 1000},
  };
  for (const RangeCase& c : cases) {
    const ReportDescriptor read = ReadField(c.items);
    EXPECT_EQ(read.Variables()[0].attributes.PhysicalMinimum, c.minimum) << c.name;
    EXPECT_EQ(read.Variables()[0].attributes.PhysicalMaximum, c.maximum) << c.name;
  }
}

// --- Usages ---

TEST(ReportDescriptor, AUsageOf32BitsCarriesItsPage) {
  const ReportDescriptor read = Read({0x05, 0x01, 0x75, 0x08, 0x95, 0x01,  // generic desktop
                                      0x0B, 0x02, 0x00, 0x00, 0xFF,        // Usage (FF00:0002)
                                      0x81, 0x02});
  EXPECT_EQ(read.Find(ReportType::Input, 2, 0xFF00), 0);
  EXPECT_EQ(read.Find(ReportType::Input, 2, 1), -1);
}

TEST(ReportDescriptor, AShortUsageTakesThePageThatHoldsAtTheMainItem) {
  const ReportDescriptor read = Read({0x05, 0x01, 0x09, 0x05, 0x06, 0x00, 0xFF, 0x75, 0x08, 0x95, 0x01, 0x81, 0x02});
  EXPECT_EQ(read.Find(ReportType::Input, 5, 0xFF00), 0);
}

TEST(ReportDescriptor, EachUsageIsAVariableAndTheLastTakesTheElementsThatAreLeft) {
  const ReportDescriptor read = Read({0x06, 0x00, 0xFF, 0x75, 0x08, 0x95, 0x05,        // 5 elements
                                      0x09, 0x10, 0x09, 0x20, 0x19, 0x30, 0x29, 0x31,  // 10, 20, 30 .. 31
                                      0x81, 0x02});
  ASSERT_EQ(read.Variables().size(), 4U);
  const std::int32_t usages[] = {0x10, 0x20, 0x30, 0x31};
  const std::size_t counts[] = {1, 1, 1, 2};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(read.Variables()[i].usageMinimum, usages[i]);
    EXPECT_EQ(read.Variables()[i].count, counts[i]);
    EXPECT_EQ(read.Variables()[i].bitOffset, 8 * i);
  }
}

TEST(ReportDescriptor, UsagesBehindTheLastElementAreLeftOut) {
  const ReportDescriptor read = Read({0x06, 0x00, 0xFF, 0x75, 0x08, 0x95, 0x02, 0x19, 0x01, 0x29, 0xFF, 0x81, 0x02});
  EXPECT_EQ(read.Variables().size(), 2U);
}

TEST(ReportDescriptor, AnArrayIsOneVariableForEachOfItsUsageRanges) {
  const ReportDescriptor read = Read({0x05, 0x07, 0x75, 0x08, 0x95, 0x06,  // keyboard page, 6 bytes
                                      0x19, 0x00, 0x29, 0x65, 0x09, 0xE0,  // 0 .. 65, E0
                                      0x81, 0x00});                        // input, array
  ASSERT_EQ(read.Variables().size(), 2U);
  EXPECT_EQ(read.Find(ReportType::Input, 0x00, 7), 0);
  EXPECT_EQ(read.Find(ReportType::Input, 0x65, 7), 0);
  EXPECT_EQ(read.Find(ReportType::Input, 0xE0, 7), 1);
  EXPECT_EQ(read.Find(ReportType::Input, 0x66, 7), -1);
  EXPECT_EQ(read.Variables()[0].count, 6U);
  EXPECT_EQ(read.Variables()[1].bitOffset, 0U);
}

TEST(ReportDescriptor, UsagesHoldForOneMainItemOnly) {
  const ReportDescriptor read = ReadField({}, {0x81, 0x02, 0x81, 0x02});
  EXPECT_EQ(read.Variables().size(), 1U);
  EXPECT_EQ(read.Reports()[0].Bytes(), 2U);
}

TEST(ReportDescriptor, ACollectionUsesUpItsUsage) {
  const ReportDescriptor read =
      Read({0x06, 0x00, 0xFF, 0x09, 0x07, 0xA1, 0x01, 0x75, 0x08, 0x95, 0x01, 0x81, 0x02, 0xC0});
  EXPECT_TRUE(read.Variables().empty());
}

TEST(ReportDescriptor, OfAlternativeUsagesTheFirstIsTaken) {
  const ReportDescriptor read = ReadField({0xA9, 0x01, 0x09, 0x02, 0x09, 0x03, 0xA9, 0x00, 0x95, 0x02});
  ASSERT_EQ(read.Variables().size(), 2U);
  EXPECT_EQ(read.Variables()[0].usageMinimum, 1);
  EXPECT_EQ(read.Variables()[1].usageMinimum, 2);
}

TEST(ReportDescriptor, RemembersTheNumberOfTheStringDescriptor) {
  EXPECT_EQ(ReadField({0x79, 0x04}).Variables()[0].stringIndex, 4U);
  EXPECT_EQ(ReadField({}).Variables()[0].stringIndex, 0U);
}

// --- State ---

TEST(ReportDescriptor, PushAndPopKeepAndBringBackTheGlobalState) {
  const ReportDescriptor read = Read({0x06, 0x00, 0xFF, 0x15, 0x00, 0x25, 0x64, 0x75, 0x08, 0x95, 0x01,  //
                                      0xA4,                                                              // Push
                                      0x05, 0x01, 0x15, 0x81, 0x25, 0x7F, 0x75, 0x10, 0x95, 0x02,        //
                                      0x09, 0x30, 0x81, 0x02,                                            //
                                      0xB4,                                                              // Pop
                                      0x09, 0x01, 0x81, 0x02});
  ASSERT_EQ(read.Variables().size(), 2U);
  EXPECT_EQ(read.Variables()[0].usagePage, 1);
  EXPECT_EQ(read.Variables()[0].attributes.LogicalMinimum, -127);
  EXPECT_EQ(read.Variables()[0].attributes.SizeInBits, 16);
  EXPECT_EQ(read.Variables()[1].usagePage, 0xFF00);
  EXPECT_EQ(read.Variables()[1].attributes.LogicalMinimum, 0);
  EXPECT_EQ(read.Variables()[1].attributes.LogicalMaximum, 100);
  EXPECT_EQ(read.Variables()[1].attributes.SizeInBits, 8);
  EXPECT_EQ(read.Variables()[1].bitOffset, 32U);
}

TEST(ReportDescriptor, StepsOverLongItemsUnitsAndReservedItems) {
  const ReportDescriptor read = ReadField({0xFE, 0x03, 0xF0, 0x81, 0x81, 0x81,  // long item with 3 bytes
                                           0x55, 0x0E, 0x65, 0x13,              // unit exponent, unit
                                           0x39, 0x01, 0x49, 0x02, 0x59, 0x03,  // designators
                                           0x89, 0x01, 0x99, 0x02,              // string range
                                           0x0C, 0xE4, 0xF9, 0x05, 0xF5, 0x05,  // reserved type and tags
                                           0xF0});
  ASSERT_EQ(read.Variables().size(), 0U);  // F0, an undefined main item, has used the usage up
  EXPECT_EQ(read.Reports()[0].Bytes(), 1U);
}

// --- Foreign devices ---

TEST(ReportDescriptor, ReadsAThreeButtonMouse) {
  const ReportDescriptor read = Read({
      0x05, 0x01, 0x09, 0x02, 0xA1, 0x01, 0x09, 0x01, 0xA1, 0x00,              // mouse, pointer
      0x05, 0x09, 0x19, 0x01, 0x29, 0x03, 0x15, 0x00, 0x25, 0x01,              // buttons 1 .. 3, 0 .. 1
      0x95, 0x03, 0x75, 0x01, 0x81, 0x02, 0x95, 0x01, 0x75, 0x05, 0x81, 0x01,  // 3 bits, 5 bits of padding
      0x05, 0x01, 0x09, 0x30, 0x09, 0x31, 0x15, 0x81, 0x25, 0x7F,              // X, Y, -127 .. 127
      0x75, 0x08, 0x95, 0x02, 0x81, 0x06, 0xC0, 0xC0,
  });
  ASSERT_EQ(read.Variables().size(), 5U);
  EXPECT_EQ(read.Reports()[0].Bytes(), 3U);
  const std::int32_t y = read.Find(ReportType::Input, 0x31, 1);
  ASSERT_EQ(y, 4);
  EXPECT_EQ(read.Variables()[4].bitOffset, 16U);
  EXPECT_FALSE(read.Variables()[4].attributes.AbsoluteNotRelative);
  EXPECT_TRUE(read.Variables()[2].attributes.IsButton);
}

TEST(ReportDescriptor, ReadsAKeyboardWithItsLamps) {
  const ReportDescriptor read = Read({
      0x05, 0x01, 0x09, 0x06, 0xA1, 0x01,                                      // keyboard
      0x05, 0x07, 0x19, 0xE0, 0x29, 0xE7, 0x15, 0x00, 0x25, 0x01,              // E0 .. E7
      0x75, 0x01, 0x95, 0x08, 0x81, 0x02, 0x95, 0x01, 0x75, 0x08, 0x81, 0x01,  // modifiers, a reserved byte
      0x95, 0x05, 0x75, 0x01, 0x05, 0x08, 0x19, 0x01, 0x29, 0x05, 0x91, 0x02,  // five lamps
      0x95, 0x01, 0x75, 0x03, 0x91, 0x01,                                      // three bits of padding
      0x95, 0x06, 0x75, 0x08, 0x15, 0x00, 0x25, 0x65, 0x05, 0x07, 0x19, 0x00, 0x29, 0x65, 0x81, 0x00, 0xC0,
  });
  EXPECT_EQ(read.LongestReport(ReportType::Input), 8U);
  EXPECT_EQ(read.LongestReport(ReportType::Output), 1U);
  EXPECT_EQ(read.Variables().size(), 14U);
  const std::int32_t keys = read.Find(ReportType::Input, 0x04, 7);
  ASSERT_GE(keys, 0);
  EXPECT_EQ(read.Variables()[static_cast<std::size_t>(keys)].bitOffset, 16U);
  EXPECT_TRUE(read.Variables()[static_cast<std::size_t>(keys)].attributes.ArrayNotVariable);
}

}  // namespace
}  // namespace kestrin::platform::hid
