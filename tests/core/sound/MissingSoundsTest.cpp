// SPDX-License-Identifier: MIT
#include "core/sound/MissingSounds.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrin::core::sound {
namespace {

/// The rows of the motion list like "1a 3b", by the names of the sounds.
std::string Rows(const MissingSounds& sounds) {
  std::string text;
  for (const MissingSound& sound : sounds.All())
    if (sound.place.kind == SlotKind::Motion)
      text += (text.empty() ? "" : " ") + std::to_string(sound.place.position) + sound.path.string();
  return text;
}

class MissingSoundsTest : public testing::Test {
 protected:
  MissingSoundsTest() {
    sounds.Put({{SlotKind::Motion, 4}, "b", 40});
    sounds.Put({{SlotKind::Motion, 2}, "a", 20});
    sounds.Put({{SlotKind::Impact, 3}, "x", 30});
  }
  MissingSounds sounds;
};

TEST_F(MissingSoundsTest, AreCountedAndFoundByTheirRows) {
  EXPECT_EQ(sounds.Count(SlotKind::Motion), 2);
  EXPECT_EQ(sounds.Count(SlotKind::Impact), 1);
  EXPECT_EQ(sounds.Count(SlotKind::Lockup), 0);
  ASSERT_NE(sounds.At({SlotKind::Motion, 4}), nullptr);
  EXPECT_EQ(sounds.At({SlotKind::Motion, 4})->volume, 40);
  EXPECT_EQ(sounds.At({SlotKind::Motion, 3}), nullptr);
  EXPECT_EQ(sounds.Above({SlotKind::Motion, 2}), 0);
  EXPECT_EQ(sounds.Above({SlotKind::Motion, 4}), 1);
  EXPECT_EQ(sounds.Above({SlotKind::Motion, 9}), 2);
}

TEST_F(MissingSoundsTest, ARowThatComesInBetweenShiftsThoseBelow) {
  sounds.OpenRow({SlotKind::Motion, 3});
  EXPECT_EQ(Rows(sounds), "2a 5b");
  sounds.OpenRow({SlotKind::Motion, 2});
  EXPECT_EQ(Rows(sounds), "3a 6b");
  EXPECT_NE(sounds.At({SlotKind::Impact, 3}), nullptr);
}

TEST_F(MissingSoundsTest, ARowThatGoesShiftsThoseBelow) {
  sounds.CloseRow({SlotKind::Motion, 1});
  EXPECT_EQ(Rows(sounds), "1a 3b");
  sounds.CloseRow({SlotKind::Motion, 1});
  EXPECT_EQ(Rows(sounds), "2b");
  EXPECT_NE(sounds.At({SlotKind::Impact, 3}), nullptr);
}

struct RowMove {
  int from;
  int to;
  const char* rows;
};

TEST_F(MissingSoundsTest, RowsMoveWithWhatIsMissingThere) {
  constexpr RowMove kCases[] = {{2, 5, "3b 5a"}, {4, 1, "1b 3a"}, {1, 5, "1a 3b"}, {5, 1, "3a 5b"},
                                {2, 4, "3b 4a"}, {4, 2, "2b 3a"}, {3, 3, "2a 4b"}, {2, 2, "2a 4b"}};
  for (const RowMove& each : kCases) {
    MissingSounds moved = sounds;
    moved.MoveRow(SlotKind::Motion, each.from, each.to);
    EXPECT_EQ(Rows(moved), each.rows) << each.from << " to " << each.to;
    EXPECT_NE(moved.At({SlotKind::Impact, 3}), nullptr);
  }
}

TEST_F(MissingSoundsTest, ALocatedSoundLeavesItsRow) {
  sounds.Take({SlotKind::Motion, 2});
  EXPECT_EQ(Rows(sounds), "4b");
  sounds.Forget(SlotKind::Motion);
  EXPECT_EQ(Rows(sounds), "");
  EXPECT_FALSE(sounds.IsEmpty());
}

TEST_F(MissingSoundsTest, AreEqualWhateverTheOrderInWhichTheyWentMissing) {
  MissingSounds other;
  other.Put({{SlotKind::Impact, 3}, "x", 30});
  other.Put({{SlotKind::Motion, 2}, "a", 20});
  other.Put({{SlotKind::Motion, 4}, "b", 40});
  EXPECT_EQ(other, sounds);
  other.Take({SlotKind::Impact, 3});
  EXPECT_NE(other, sounds);
}

}  // namespace
}  // namespace kestrin::core::sound
