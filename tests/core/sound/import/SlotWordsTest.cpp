// SPDX-License-Identifier: MIT
#include "core/sound/import/SlotWords.h"

#include <gmock/gmock.h>

namespace kestrin::core::sound {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SlotWordsTest, WordsEndWhereAPersonSeesTheirEnd) {
  EXPECT_THAT(SlotWords::In("swing01"), ElementsAre("swing"));
  EXPECT_THAT(SlotWords::In("Swing_1"), ElementsAre("swing"));
  EXPECT_THAT(SlotWords::In("SWING (3)"), ElementsAre("swing"));
  EXPECT_THAT(SlotWords::In("PwrOn_2"), ElementsAre("pwr", "on"));
  EXPECT_THAT(SlotWords::In("my-HUM.loop"), ElementsAre("my", "hum", "loop"));
  EXPECT_THAT(SlotWords::In("01 02"), IsEmpty());
  EXPECT_THAT(SlotWords::In(""), IsEmpty());
}

TEST(SlotWordsTest, AccentsDoNotMatter) {
  EXPECT_THAT(SlotWords::In("Z\u00fcndung"), ElementsAre("zundung"));
  // Taken apart: a "u" and the mark above it.
  EXPECT_THAT(SlotWords::In("Zu\u0308ndung"), ElementsAre("zundung"));
  EXPECT_THAT(SlotWords::In("D\u00c9MARRAGE"), ElementsAre("demarrage"));
  EXPECT_THAT(SlotWords::In("colis\u00e3o \u017bar"), ElementsAre("colisao", "zar"));
  EXPECT_THAT(SlotWords::In("\u0177\u017e\u0101"), ElementsAre("yza"));
}

TEST(SlotWordsTest, OtherLettersAndBrokenOnesEndAWord) {
  EXPECT_THAT(SlotWords::In("\u5263hum\u5263"), ElementsAre("hum"));
  EXPECT_THAT(SlotWords::In("hum\xC3"), ElementsAre("hum"));
  EXPECT_THAT(SlotWords::In("\xFF\xFEhum\x80in"), ElementsAre("hum", "in"));
  EXPECT_THAT(SlotWords::In("\u00d7\u00f7"), IsEmpty());
}

}  // namespace
}  // namespace kestrin::core::sound
