// SPDX-License-Identifier: MIT
#include "core/sound/board/SetComparison.h"

#include <gtest/gtest.h>

#include "support/FlashBoard.h"
#include "support/SoundSet.h"

namespace kestrin::core::sound {
namespace {

using Differences = std::vector<SetDifference>;

/// Two sets of the same samples in different files: all motion sounds differ from one another.
class SetComparisonTest : public ::testing::Test {
 protected:
  SetComparisonTest() {
    for (Side* side : {&m_first, &m_second}) {
      for (const Slot& slot : kSlots) Put(*side, slot.kind, 100 + static_cast<unsigned>(slot.kind));
      Put(*side, SlotKind::Motion, 200);
    }
  }

  struct Side {
    support::TemporaryFolder folder;
    LSU_Configuration set;
    int files = 0;
  };

  /// A sound of 100 samples, which are those of `seed`.
  static void Put(Side& side, SlotKind kind, unsigned seed) {
    const auto path = side.folder / (std::to_string(++side.files) + ".lsu");
    ASSERT_TRUE(side.set.AddFile(support::WriteSoundFile(path, support::SomeSamples(100, 20000, seed)), kind));
  }
  /// What is left to find when the second set lies on a board.
  [[nodiscard]] Differences WithBoard() {
    EXPECT_TRUE(m_first.set.MakeMemoryMap({}));
    EXPECT_TRUE(m_second.set.MakeMemoryMap({}));
    support::FlashBoard board;
    board.Hold(m_second.set);
    BoardInquiry inquiry(board.tls);
    const auto sounds = inquiry.Read();
    EXPECT_TRUE(sounds) << sounds.Text();
    if (!sounds) return {};
    const auto differences = SetComparison::WithBoard(m_first.set, *sounds, inquiry);
    EXPECT_TRUE(differences) << differences.Text();
    return differences ? *differences : Differences();
  }
  void ExpectBoth(const Differences& expected) {
    EXPECT_EQ(SetComparison::Of(m_first.set, m_second.set), expected);
    EXPECT_EQ(WithBoard(), expected);
  }

  Side m_first;
  Side m_second;
};

TEST_F(SetComparisonTest, TheSameSamplesAreTheSameSound) { ExpectBoth({}); }

TEST_F(SetComparisonTest, EveryDifferenceHasItsPlaceAndKind) {
  m_second.set.SetVolume(SlotKind::Idle, 1, 55);
  m_second.set.SetVolume(SlotKind::Motion, 2, 30);
  Put(m_second, SlotKind::PwrOn, 7);
  Put(m_first, SlotKind::Impact, 8);
  Put(m_second, SlotKind::Lockup, 9);
  Put(m_second, SlotKind::Lockup, 10);
  ExpectBoth({{{SlotKind::PwrOn, 1}, Differs::Sound},
              {{SlotKind::Idle, 1}, Differs::Volume},
              {{SlotKind::Motion, 2}, Differs::Volume},
              {{SlotKind::Impact, 2}, Differs::OnlyInFirst},
              {{SlotKind::Lockup, 2}, Differs::OnlyInSecond},
              {{SlotKind::Lockup, 3}, Differs::OnlyInSecond}});
}

TEST_F(SetComparisonTest, SoundsThatHaveChangedPlacesDiffer) {
  m_second.set.MoveFile(SlotKind::Motion, 1, 2);
  ExpectBoth({{{SlotKind::Motion, 1}, Differs::Sound}, {{SlotKind::Motion, 2}, Differs::Sound}});
}

TEST_F(SetComparisonTest, AnEmptySingleSlotIsOnlyInTheOther) {
  m_first.set.RemoveFile(1, SlotKind::Boot);
  EXPECT_EQ(SetComparison::Of(m_first.set, m_second.set), (Differences{{{SlotKind::Boot, 1}, Differs::OnlyInSecond}}));
}

TEST_F(SetComparisonTest, ASoundThatCannotBeReadIsAnother) {
  std::filesystem::remove(m_second.set.FileAt(SlotKind::Boot).FileNameAndPath());
  EXPECT_EQ(SetComparison::Of(m_first.set, m_second.set), (Differences{{{SlotKind::Boot, 1}, Differs::Sound}}));
}

TEST_F(SetComparisonTest, OneSampleMakesAnotherSound) {
  std::vector<std::int16_t> samples = support::SomeSamples(100, 20000, 101);
  ++samples[99];
  support::WriteSoundFile(m_second.set.FileAt(SlotKind::Boot).FileNameAndPath(), samples);
  EXPECT_EQ(SetComparison::Of(m_first.set, m_second.set), (Differences{{{SlotKind::Boot, 1}, Differs::Sound}}));
}

TEST(SetComparison, HasAWordForEveryKind) {
  EXPECT_EQ(SetComparison::NameOf(Differs::Volume), "volume");
  EXPECT_EQ(SetComparison::NameOf(Differs::Sound), "sound");
  EXPECT_EQ(SetComparison::NameOf(Differs::OnlyInFirst), "only-a");
  EXPECT_EQ(SetComparison::NameOf(Differs::OnlyInSecond), "only-b");
}

}  // namespace
}  // namespace kestrin::core::sound
