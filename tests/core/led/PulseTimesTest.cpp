// SPDX-License-Identifier: MIT
#include "core/led/PulseTimes.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "core/base/Numbers.h"
#include "core/base/PlainNumber.h"
#include "support/DecimalComma.h"

namespace kestrin::core::led {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

TEST(PlainNumber, WritesPlainDecimalsThatReadBack) {
  struct Row {
    double number;
    const char* text;
  };
  for (const Row& row :
       {Row{0, "0"}, Row{-0.0, "0"}, Row{1500, "1500"}, Row{2.5, "2.5"}, Row{-0.02, "-0.02"}, Row{0.1, "0.1"},
        Row{10000000, "10000000"}, Row{1e-7, "0.0000001"}, Row{1e21, "1000000000000000000000"}})
    EXPECT_EQ(base::PlainNumber(row.number), row.text);
  for (const double number : {kLargest, -kLargest, std::numeric_limits<double>::denorm_min(), 1.0 / 3})
    EXPECT_EQ(base::LeadingNumber(base::PlainNumber(number)), number);
}

/// What a box stands for that says this.
double Number(const std::string& text) { return base::LeadingNumber(text); }

TEST(PulseTimes, APulsesTimeIsShownInSecondsWithTwoDecimals) {
  struct Row {
    double milliseconds;
    const char* text;
  };
  // 5, 15 and 25 ms are ties at the second decimal: they go to the even digit.
  for (const Row& row : {Row{0, "0"}, Row{1500, "1.5"}, Row{20, "0.02"}, Row{5, "0"}, Row{6, "0.01"}, Row{15, "0.02"},
                         Row{25, "0.02"}, Row{26, "0.03"}, Row{12345.678, "12.35"}, Row{65534, "65.53"},
                         Row{10000000, "10000"}, Row{-1000, "-1"}, Row{-4, "0"}, Row{999999.9, "1000"}}) {
    EXPECT_EQ(SecondsText(row.milliseconds), row.text) << row.milliseconds;
    EXPECT_EQ(SecondsOf(row.milliseconds), Number(row.text)) << row.milliseconds;
  }
  EXPECT_EQ(Number(SecondsText(kLargest)), kLargest / 1000) << "too large for decimals";
}

TEST(PulseTimes, ABoxesTextIsReadInSecondsWithoutRounding) {
  struct Row {
    const char* text;
    double milliseconds;
  };
  for (const Row& row : {Row{"1.5", 1500}, Row{"0.0025", 2.5}, Row{".5", 500}, Row{" 1 0", 10000}, Row{"2 s", 2000},
                         Row{"", 0}, Row{"soon", 0}, Row{"-1", -1000}, Row{"1,5", 1000}, Row{"1e1", 10000},
                         Row{"1e999", kLargest}, Row{"-1e999", -kLargest}})
    EXPECT_EQ(MillisecondsOf(Number(row.text)), row.milliseconds) << row.text;
}

TEST(PulseTimes, LeavingATimeBoxCutsItToWholeStepsInsideItsBounds) {
  struct Row {
    const char* typed;
    const char* left;
    /// In the rise box, where that differs.
    const char* leftInRise = nullptr;
  };
  const Row rows[] = {
      {"0.035", "0.02"},
      {"-1", "0"},
      {"12000", "10000", "10"},
      {"12", "12", "10"},
      {"", "0"},
      {"abc", "0"},
      {"-0", "0"},
      {"0", "0"},
      {"0.019", "0"},
      {"0.02", "0.02"},
      {"0.04", "0.04"},
      {"-0.001", "0"},
      {"1,5", "1"},
      {"1.5 s", "1.5"},
      {"9.99", "9.98"},
      {"10", "10"},
      {"10.01", "10"},
      {"10.02", "10.02", "10"},
      {"9999.99", "9999.98", "10"},
      {"10000", "10000", "10"},
      {"10000.02", "10000", "10"},
      {"1e999", "10000", "10"},
      {"-1e999", "0"},
      {"1e39", "10000", "10"},
      // Single precision: 2.1 is 2.0999999 there, and fifty times that 104.99999, below the 105th step.
      {"2.1", "2.08"},
      // 5000.26 is 5000.259766, fifty times that 250012.98, below the 250013th step.
      {"5000.26", "5000.24", "10"},
  };
  for (const Row& row : rows)
    for (const TimeBox box : kTimeBoxes) {
      const bool rise = box == TimeBox::IdleTRISE && row.leftInRise != nullptr;
      EXPECT_EQ(base::PlainNumber(NormalisedTime(box, Number(row.typed))), rise ? row.leftInRise : row.left)
          << row.typed << " in box " << static_cast<int>(box);
    }
}

TEST(PulseTimes, WhatIsLeftIsAWholeStepAndHardlyLessThanTyped) {
  for (int hundredths = 0; hundredths <= 20000; ++hundredths) {
    const double typed = hundredths / 100.0;
    const double left = NormalisedTime(TimeBox::IdleTON, typed) * 100;
    const int steps = static_cast<int>(left / 2 + 0.5);
    ASSERT_NEAR(left, 2 * steps, 1e-6) << typed;
    // Single precision may cost the step that an exact calculation just reaches.
    ASSERT_LE(2 * steps, hundredths) << typed;
    ASSERT_GE(2 * steps, hundredths - 2) << typed;
  }
}

TEST(PulseTimes, AStepPassesOverTheTimesThatABoxDoesNotKeep) {
  struct Row {
    const char* text;
    int steps;
    const char* stepped;
    /// In the rise box, where that differs.
    const char* steppedInRise = nullptr;
  };
  const Row rows[] = {
      {"0", 1, "0.02"},
      {"0.8", 1, "0.82"},
      {"0.82", -10, "0.62"},
      {"0", -1, "0"},
      {"0.06", -10, "0"},
      {"", 1, "0.02"},
      {"0.035", 1, "0.04"},
      // In single precision 1.06, 1.18, 2.1 and 2.12 are a hair less: leaving the box would take the step away again.
      {"1.04", 1, "1.08"},
      {"1.08", -1, "1.04"},
      {"1.16", 1, "1.2"},
      {"2.08", 1, "2.14"},
      {"2.14", -1, "2.08"},
      // So is 9.98, which a board may hold all the same.
      {"9.98", 1, "10"},
      {"9.98", -1, "9.96"},
      {"9.98", 10, "10.18", "10"},
      {"10000", 1, "10000", "10"},
      {"10000", -1, "9999.98", "9.96"},
      {"12000", 10, "10000", "10"},
  };
  for (const Row& row : rows)
    for (const TimeBox box : kTimeBoxes) {
      const bool rise = box == TimeBox::IdleTRISE && row.steppedInRise != nullptr;
      EXPECT_EQ(base::PlainNumber(SteppedTime(box, Number(row.text), row.steps)),
                rise ? row.steppedInRise : row.stepped)
          << row.text << " and " << row.steps << " steps in box " << static_cast<int>(box);
    }
}

TEST(PulseTimes, StepAfterStepReachesTheBounds) {
  struct Row {
    TimeBox box;
    double from;
    int direction;
    double bound;
  };
  for (const Row& row : {Row{TimeBox::IdleTRISE, 0, 1, 10}, Row{TimeBox::IdleTRISE, 10, -1, 0},
                         Row{TimeBox::IdleTON, 50, -1, 0}, Row{TimeBox::FocTOFF, 9950, 1, 10000}}) {
    SCOPED_TRACE(row.from);
    double seconds = row.from;
    int presses = 0;
    while (seconds != row.bound) {
      ASSERT_LT(++presses, 2600) << "more presses than there are steps";
      const double next = SteppedTime(row.box, seconds, row.direction);
      ASSERT_GT((next - seconds) * row.direction, 0.019) << seconds;
      ASSERT_LT((next - seconds) * row.direction, 0.2) << seconds;
      ASSERT_EQ(NormalisedTime(row.box, next), next) << "leaving the box would move it";
      seconds = next;
    }
  }
}

TEST(PulseTimes, RepetitionsAreWholeAndFromOneToTen) {
  struct Row {
    const char* typed;
    const char* left;
    int read;
  };
  for (const Row& row :
       {Row{"0", "1", 0}, Row{"2.7", "2", 3}, Row{"15", "10", 15}, Row{"1", "1", 1}, Row{"10", "10", 10},
        Row{"0.99", "1", 1}, Row{"10.99", "10", 11}, Row{"11", "10", 11}, Row{"-3", "1", -3}, Row{"", "1", 0},
        Row{"x", "1", 0}, Row{"2.5", "2", 2}, Row{"3.5", "3", 4}, Row{"7 times", "7", 7}, Row{"1e999", "10", 32767},
        Row{"-1e999", "1", -32768}, Row{"70000", "10", 32767}}) {
    EXPECT_EQ(base::PlainNumber(NormalisedRepetitions(Number(row.typed))), row.left) << row.typed;
    EXPECT_EQ(RepetitionsOf(Number(row.typed)), row.read) << row.typed;
  }
}

TEST(PulseTimes, ThePointIsTheDecimalPointUnderALocaleWithAComma) {
  const support::DecimalComma locale;
  EXPECT_EQ(SecondsText(1500), "1.5");
  EXPECT_EQ(SecondsText(1234567), "1234.57");
  EXPECT_EQ(MillisecondsOf(Number("2.5")), 2500);
  EXPECT_EQ(MillisecondsOf(Number("2,5")), 2000);
}

}  // namespace
}  // namespace kestrin::core::led
