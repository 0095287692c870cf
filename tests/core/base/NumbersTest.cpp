// SPDX-License-Identifier: MIT
#include "core/base/Numbers.h"

#include <gtest/gtest.h>

#include <limits>

namespace kestrin::core::base {
namespace {

struct NumberCase {
  const char* text;
  double value;
};

TEST(LeadingNumber, ReadsTheNumberAtTheStartOfATextAndIgnoresBlanks) {
  const NumberCase cases[] = {
      {"", 0},       {"0", 0},          {"100", 100},  {" 100", 100},     {"100 ", 100}, {"1 0 0", 100}, {"\t7", 7},
      {"-3", -3},    {"- 3", -3},       {"+4", 4},     {"2.5", 2.5},      {".5", 0.5},   {"5.", 5},      {"2.5.7", 2.5},
      {"2,5", 2},    {"12abc", 12},     {"abc", 0},    {"abc12", 0},      {"-", 0},      {".", 0},       {"inf", 0},
      {"nan", 0},    {"-inf", 0},       {"--3", 0},    {"2e-5", 0.00002}, {"1e", 1},     {"0x10", 0},    {"80VL3", 80},
      {"120%", 120}, {"-0.25x", -0.25}, {"1e-999", 0}, {"0.0e-999", 0},
  };
  for (const NumberCase& c : cases) EXPECT_DOUBLE_EQ(LeadingNumber(c.text), c.value) << '"' << c.text << '"';
}

TEST(LeadingNumber, BeyondTheRangeOfDoublesIsInfinite) {
  EXPECT_EQ(LeadingNumber("1e999"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(LeadingNumber("-1e999"), -std::numeric_limits<double>::infinity());
}

TEST(RoundHalfEven, RoundsTiesToTheEvenNumber) {
  const struct {
    double value;
    double rounded;
  } cases[] = {{0.5, 0},   {1.5, 2},   {2.5, 2},      {13.5, 14}, {12.5, 12},        {14.5, 14}, {-0.5, 0},
               {-1.5, -2}, {-2.5, -2}, {0.499999, 0}, {0.51, 1},  {1e15 + .5, 1e15}, {7, 7},     {-7.2, -7}};
  for (const auto& c : cases) EXPECT_DOUBLE_EQ(RoundHalfEven(c.value), c.rounded) << c.value;
}

TEST(RoundTo, ThrowsExactlyWhenTheRoundedValueDoesNotFit) {
  EXPECT_EQ(RoundTo<std::int16_t>(32767.49), 32767);
  EXPECT_EQ(RoundTo<std::int16_t>(-32768.5), -32768);
  EXPECT_THROW(static_cast<void>(RoundTo<std::int16_t>(32767.5)), std::overflow_error);
  EXPECT_THROW(static_cast<void>(RoundTo<std::int16_t>(-32769)), std::overflow_error);
  EXPECT_THROW(static_cast<void>(RoundTo<std::int32_t>(std::numeric_limits<double>::infinity())), std::overflow_error);
  EXPECT_THROW(static_cast<void>(RoundTo<std::int32_t>(std::numeric_limits<double>::quiet_NaN())), std::overflow_error);
}

}  // namespace
}  // namespace kestrin::core::base
