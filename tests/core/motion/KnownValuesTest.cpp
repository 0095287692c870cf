// SPDX-License-Identifier: MIT
#include "core/motion/KnownValues.h"

#include <gtest/gtest.h>

#include "core/motion/DetectionParameter.h"

namespace kestrin::core::motion {
namespace {

using Question = KnownValues::Question;
using Source = KnownValues::Source;

constexpr device::AccParam kMine{9, 2, 10, 50, 125, 25};
constexpr device::AccParam kOther{180, 2, 10, 50, 125, 13};
constexpr device::AccParam kWiped{255, 255, 255, 255, 255, 255};
constexpr std::uint16_t kRevision = kFlashPeriodRevision;

TEST(KnownValuesTest, NothingIsKnownAtFirstAndAfterAReadingThatFailed) {
  KnownValues known;
  EXPECT_EQ(known.From(), Source::Unread);
  EXPECT_EQ(known.Held(), std::nullopt);
  known.SetTold(kMine, std::nullopt);
  EXPECT_EQ(known.From(), Source::Told);
  EXPECT_EQ(known.Held(), kMine);
  known.SetUnread(std::nullopt);
  EXPECT_EQ(known.From(), Source::Unread);
  EXPECT_EQ(known.Held(), std::nullopt);
}

TEST(KnownValuesTest, SendingAsksOverUnreadValuesAndOverKeptOnes) {
  KnownValues known;
  EXPECT_EQ(known.BeforeSending(kMine, kRevision), Question::OverUnread);
  known.SetTold(kOther, std::nullopt);
  EXPECT_EQ(known.BeforeSending(kMine, kRevision), Question::None);
  known.SetAccepted(kOther, std::nullopt);
  EXPECT_EQ(known.BeforeSending(kMine, kRevision), Question::None) << "the person's own";
  known.SetTold(kWiped, kMine);
  EXPECT_EQ(known.BeforeSending(kOther, kRevision), Question::OverKept);
  EXPECT_EQ(known.BeforeSending(kMine, kRevision), Question::None) << "they come back";
  known.SetUnread(kMine);
  EXPECT_EQ(known.BeforeSending(kOther, kRevision), Question::OverKept);
  EXPECT_EQ(known.BeforeSending(kMine, kRevision), Question::None) << "they are the board's own";
}

TEST(KnownValuesTest, KeptValuesComeBackInTheFormThatASliderHasForThem) {
  KnownValues known;
  known.SetTold(kWiped, device::AccParam{0, 40, 200, 50, 125, 255});
  EXPECT_EQ(known.BeforeSending({1, 25, 31, 50, 125, 250}, kRevision), Question::None);
  EXPECT_EQ(known.BeforeSending({2, 25, 31, 50, 125, 250}, kRevision), Question::OverKept);
  EXPECT_EQ(known.BeforeSending({1, 25, 31, 50, 125, 13}, kRevision), Question::OverKept);
  EXPECT_EQ(known.BeforeSending({1, 25, 31, 50, 125, 13}, kRevision - 1), Question::None)
      << "such a board has no flash period";
}

TEST(KnownValuesTest, ValuesThatADownloadHasWipedAreNotKnown) {
  KnownValues known;
  known.SetTold(kMine, std::nullopt);
  EXPECT_FALSE(known.Follow(std::nullopt));
  EXPECT_EQ(known.From(), Source::Told);
  EXPECT_TRUE(known.Follow(kMine));
  EXPECT_EQ(known.From(), Source::Unread);
  EXPECT_EQ(known.Held(), std::nullopt);
  EXPECT_EQ(known.BeforeSending(kOther, kRevision), Question::OverKept);
  EXPECT_FALSE(known.Follow(kMine)) << "that is known already";
}

TEST(KnownValuesTest, ValuesThatADownloadHasPutBackAreOnTheBoard) {
  KnownValues known;
  known.SetTold(kWiped, kMine);
  EXPECT_TRUE(known.Follow(std::nullopt));
  EXPECT_EQ(known.From(), Source::Accepted);
  EXPECT_EQ(known.Held(), kMine);
  EXPECT_EQ(known.BeforeSending(kOther, kRevision), Question::None);
}

}  // namespace
}  // namespace kestrin::core::motion
