// SPDX-License-Identifier: MIT
#include "core/sound/FlashBlock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrin::core::sound {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(FlashBlocks, OfAnEmptyStreamAreNone) { EXPECT_THAT(FlashBlocks(0), IsEmpty()); }

TEST(FlashBlocks, AStreamOfOneBlockIsARestAndTooLongForOneReport) {
  EXPECT_THAT(FlashBlocks(1024), ElementsAre(FlashBlock{0, 1021, false}, FlashBlock{1021, 3, false}));
}

TEST(FlashBlocks, OneByteMoreIsAWholeBlockAndARestOfOne) {
  EXPECT_THAT(FlashBlocks(1025), ElementsAre(FlashBlock{0, 1024, true}, FlashBlock{1024, 1, false}));
}

TEST(FlashBlocks, Of2049BytesAreTwoWholeBlocksAndOneByte) {
  EXPECT_THAT(FlashBlocks(2049),
              ElementsAre(FlashBlock{0, 1024, true}, FlashBlock{1024, 1024, true}, FlashBlock{2048, 1, false}));
}

TEST(FlashBlocks, WithoutARestEndWithTheLastWholeBlock) {
  EXPECT_THAT(FlashBlocks(2048), ElementsAre(FlashBlock{0, 1024, true}, FlashBlock{1024, 1024, true}));
}

TEST(FlashBlocks, OfEveryRestCoverTheStreamAndFitIntoTheirReports) {
  for (const int whole : {0, 2, 5}) {
    for (int rest = 0; rest <= 1024; ++rest) {
      const int length = whole * 1024 + rest;
      std::int32_t covered = 0;
      int rests = 0;
      for (const FlashBlock& block : FlashBlocks(length)) {
        EXPECT_EQ(block.offset, covered);
        EXPECT_GT(block.size, 0);
        EXPECT_LE(block.size, block.whole ? 1024 : 1021);
        EXPECT_EQ(block.whole, block.size == 1024);
        covered += block.size;
        rests += block.whole ? 0 : 1;
      }
      EXPECT_EQ(covered, length);
      // A whole block's worth behind other blocks is a whole block; a rest above 1,021 goes in two.
      const int expected = rest == 0 || (rest == 1024 && whole > 0) ? 0 : rest <= 1021 ? 1 : 2;
      EXPECT_EQ(rests, expected) << length;
    }
  }
}

}  // namespace
}  // namespace kestrin::core::sound
