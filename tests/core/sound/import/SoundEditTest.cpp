// SPDX-License-Identifier: MIT
#include "core/sound/import/SoundEdit.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrin::core::sound {
namespace {

std::vector<double> Edited(const SoundEdit& edit, double value, std::size_t block) {
  std::vector<double> all(static_cast<std::size_t>(edit.kept.Length()), value);
  for (std::size_t i = 0; i < all.size(); i += block)
    edit.Apply(i, std::span(all).subspan(i, std::min(block, all.size() - i)));
  return all;
}

TEST(SoundEditTest, WithoutAnythingToDoNothingChanges) {
  const SoundEdit edit{{100, 600}};
  EXPECT_FALSE(edit.ChangesSamples());
  EXPECT_EQ(Edited(edit, 0.5, 7), std::vector<double>(500, 0.5));
}

TEST(SoundEditTest, FadesAreStraightAndFiveMillisecondsLong) {
  for (const std::size_t block : {1U, 7U, 4096U}) {
    const std::vector<double> faded = Edited({{0, 1000}, true, true}, 1, block);
    for (std::size_t i = 0; i < 1000; ++i) {
      const double in = i < 240 ? (static_cast<double>(i) + 0.5) / 240 : 1;
      const double out = i >= 760 ? (static_cast<double>(1000 - i) - 0.5) / 240 : 1;
      ASSERT_DOUBLE_EQ(faded[i], in * out) << i;
    }
  }
}

TEST(SoundEditTest, EachEndFadesByItself) {
  EXPECT_LT(Edited({{0, 1000}, true, false}, 1, 100).front(), 0.01);
  EXPECT_EQ(Edited({{0, 1000}, true, false}, 1, 100).back(), 1);
  EXPECT_EQ(Edited({{0, 1000}, false, true}, 1, 100).front(), 1);
  EXPECT_LT(Edited({{0, 1000}, false, true}, 1, 100).back(), 0.01);
}

TEST(SoundEditTest, AShortSoundFadesByHalves) {
  const std::vector<double> faded = Edited({{0, 100}, true, true}, 1, 100);
  EXPECT_DOUBLE_EQ(faded[0], 0.5 / 50);
  EXPECT_DOUBLE_EQ(faded[49], 49.5 / 50);
  EXPECT_DOUBLE_EQ(faded[50], 49.5 / 50);
  EXPECT_DOUBLE_EQ(faded[99], 0.5 / 50);
}

TEST(SoundEditTest, ABeginningOfItsOwnTakesThePlaceOfTheFirstSamples) {
  SoundEdit edit{{500, 510}};
  edit.beginning = {1, 2, 3};
  EXPECT_TRUE(edit.ChangesSamples());
  EXPECT_EQ(Edited(edit, 0, 2), (std::vector<double>{1, 2, 3, 0, 0, 0, 0, 0, 0, 0}));
}

}  // namespace
}  // namespace kestrin::core::sound
