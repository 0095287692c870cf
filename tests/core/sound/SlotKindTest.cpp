// SPDX-License-Identifier: MIT
#include "core/sound/SlotKind.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace kestrin::core::sound {
namespace {

TEST(SlotKind, SlotsHaveTheirNumbersKindsAndKeywordsInTheOrderOfTheFlash) {
  struct Row {
    int number;
    bool isList;
    const char* keyword;
  };
  constexpr Row kRows[] = {{1, false, "BOOT"},  {2, false, "PWRON"}, {3, false, "PWROFF"}, {7, false, "IDLE"},
                           {4, true, "MOTION"}, {5, true, "IMPACT"}, {6, true, "LOCKUP"}};
  ASSERT_EQ(std::size(kRows), kSlots.size());
  for (std::size_t i = 0; i < kSlots.size(); ++i) {
    EXPECT_EQ(static_cast<int>(kSlots[i].kind), kRows[i].number);
    EXPECT_EQ(kSlots[i].isList, kRows[i].isList) << kRows[i].keyword;
    EXPECT_EQ(kSlots[i].keyword, kRows[i].keyword);
  }
}

TEST(SlotKind, EverySlotIsFoundByItsKind) {
  for (const Slot& slot : kSlots) EXPECT_EQ(&SlotOf(slot.kind), &slot);
}

TEST(SlotKind, ANumberThatIsNoSlotIsABrokenPromise) {
  for (const int number : {-1, 0, 8}) EXPECT_THROW((void)SlotOf(static_cast<SlotKind>(number)), std::out_of_range);
}

}  // namespace
}  // namespace kestrin::core::sound
