// SPDX-License-Identifier: MIT
#include "core/sound/import/Mixdown.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrin::core::sound {
namespace {

TEST(MixdownTest, OneChannelStaysAsItIs) {
  Mixdown mixdown(1);
  std::vector<double> out{9};
  mixdown.Add(std::vector<double>{0.5, -1.5}, out);
  EXPECT_EQ(out, (std::vector<double>{9, 0.5, -1.5}));
  EXPECT_EQ(mixdown.Text(), "");
  EXPECT_FALSE(mixdown.IsCancelledOut());
}

TEST(MixdownTest, SeveralBecomeTheirMeanWhichCannotClip) {
  Mixdown stereo(2);
  std::vector<double> out;
  stereo.Add(std::vector<double>{1, 1, -1, -1, 1, 0, 0.25, -0.75}, out);
  EXPECT_EQ(out, (std::vector<double>{1, -1, 0.5, -0.25}));
  EXPECT_EQ(stereo.Text(), "stereo to mono");

  Mixdown four(4);
  out.clear();
  four.Add(std::vector<double>{1, 1, 1, 1, 1, 0, 0, 0}, out);
  EXPECT_EQ(out, (std::vector<double>{1, 0.25}));
  EXPECT_EQ(four.Text(), "4 channels to mono");
}

TEST(MixdownTest, ChannelsThatCancelOutAreNoticed) {
  Mixdown mixdown(2);
  std::vector<double> out;
  mixdown.Add(std::vector<double>{0.5, -0.5, -0.6, 0.6}, out);
  EXPECT_TRUE(mixdown.IsCancelledOut());
  EXPECT_EQ(mixdown.LoudestChannel(), 0U);
  mixdown.Add(std::vector<double>{0.1, 0.1}, out);
  EXPECT_FALSE(mixdown.IsCancelledOut());
}

TEST(MixdownTest, SilenceCancelsNothingOut) {
  Mixdown mixdown(2);
  std::vector<double> out;
  mixdown.Add(std::vector<double>(10, 0.0), out);
  EXPECT_FALSE(mixdown.IsCancelledOut());
}

TEST(MixdownTest, OneChannelAloneCanBeTaken) {
  Mixdown mixdown(2, 1);
  std::vector<double> out;
  mixdown.Add(std::vector<double>{0.5, -0.5, -0.6, 0.6}, out);
  EXPECT_EQ(out, (std::vector<double>{-0.5, 0.6}));
  EXPECT_FALSE(mixdown.IsCancelledOut());
  EXPECT_EQ(mixdown.Text(), "stereo to its channel 2, since together they cancel out");
}

}  // namespace
}  // namespace kestrin::core::sound
