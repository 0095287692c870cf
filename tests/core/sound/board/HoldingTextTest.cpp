// SPDX-License-Identifier: MIT
#include "core/sound/board/HoldingText.h"

#include <gtest/gtest.h>

namespace kestrin::core::sound {
namespace {

const SetDifference kMotion2{{SlotKind::Motion, 2}, Differs::Sound};
const SetDifference kIdle{{SlotKind::Idle, 1}, Differs::Volume};
const SetDifference kLockup1{{SlotKind::Lockup, 1}, Differs::OnlyInFirst};

TEST(HoldingText, NamesPlacesAsPeopleDo) {
  EXPECT_EQ(HoldingText::NameOf({SlotKind::Motion, 2}), "Motion 2");
  EXPECT_EQ(HoldingText::NameOf({SlotKind::PwrOff, 1}), "Power Off");
  EXPECT_EQ(HoldingText::NameOf({SlotKind::Lockup, 12}), "Lock-up 12");
}

TEST(HoldingText, SaysWhereASetDiffers) {
  EXPECT_EQ(HoldingText::Of("This set", {}, 2), "This set");
  EXPECT_EQ(HoldingText::Of("This set", {kIdle}, 2), "This set, but Idle differs");
  EXPECT_EQ(HoldingText::Of("This set", {kMotion2, kIdle}, 2), "This set, but Motion 2 and Idle differ");
  EXPECT_EQ(HoldingText::Of("This set", {kMotion2, kIdle, kLockup1}, 2),
            "This set, but Motion 2, Idle and 1 more differ");
  EXPECT_EQ(HoldingText::Of("\"Deep Forge\"", {kMotion2, kIdle, kLockup1}, 5),
            "\"Deep Forge\", but Motion 2, Idle and Lock-up 1 differ");
}

TEST(HoldingText, CountsSoundsThatNobodyKnows) {
  // 72,000 bytes are a second.
  std::vector<FlashSound> sounds = {{{SlotKind::Boot, 1}, 512, 72000, 0},
                                    {{SlotKind::Motion, 1}, 72513, 36000, 0},
                                    {{SlotKind::Motion, 2}, 108514, 36000, 0},
                                    {{SlotKind::Lockup, 1}, 144515, 7200, 0}};
  EXPECT_EQ(HoldingText::Of(sounds),
            "A set this computer does not know: 2 motion sounds, 0 impact sounds, 1 lock-up sound, 2.1 s in all");
  EXPECT_EQ(HoldingText::Of(std::vector<FlashSound>()), "Nothing yet: its memory is empty");
}

}  // namespace
}  // namespace kestrin::core::sound
