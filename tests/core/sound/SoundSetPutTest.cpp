// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "core/sound/SoundSet.h"
#include "support/SoundSet.h"

namespace kestrin::core::sound {
namespace {

/// A set of four motion sounds, each of its own volume.
class SoundSetPutTest : public ::testing::Test {
 protected:
  SoundSetPutTest() {
    for (int i = 1; i <= 4; ++i) {
      EXPECT_TRUE(m_set.Add(SlotKind::Motion, Sound(i)));
      EXPECT_TRUE(m_set.SetVolume(SlotKind::Motion, i, static_cast<std::int16_t>(10 * i)));
    }
  }

  [[nodiscard]] std::filesystem::path Sound(int number) const {
    return support::WriteSoundFile(
        m_folder / (std::to_string(number) + ".lsu"),
        support::SomeSamples(100 + static_cast<std::size_t>(number), 20000, static_cast<unsigned>(number)));
  }
  /// "1 10, 2 20": the list's files with their volumes.
  [[nodiscard]] std::string Motions() const {
    std::string text;
    for (int i = 1; i <= m_set.Count(SlotKind::Motion); ++i) {
      const LSU_SoundFile& sound = m_set.At({SlotKind::Motion, i});
      text += (i == 1 ? "" : ", ") + sound.FileNameAndPath().stem().string() + " " + std::to_string(sound.Volume());
    }
    return text;
  }

  support::TemporaryFolder m_folder;
  LSU_Configuration m_configuration;
  SoundSet m_set{m_configuration};
};

TEST_F(SoundSetPutTest, ASoundTakesAnothersPlaceAndTheOthersKeepTheirs) {
  ASSERT_TRUE(m_set.Put({SlotKind::Motion, 2}, Sound(9), 77));
  EXPECT_EQ(Motions(), "1 10, 9 77, 3 30, 4 40");
  EXPECT_EQ(m_configuration.TotalNrOfSamples(), 101 + 109 + 103 + 104);
  m_set.Undo();
  EXPECT_EQ(Motions(), "1 10, 2 20, 3 30, 4 40");
}

TEST_F(SoundSetPutTest, AFullListTakesItToo) {
  for (int i = 5; i <= 12; ++i) ASSERT_TRUE(m_set.Add(SlotKind::Motion, Sound(i)));
  ASSERT_TRUE(m_set.Put({SlotKind::Motion, 12}, Sound(13), 5));
  EXPECT_EQ(m_set.At({SlotKind::Motion, 12}).FileNameAndPath().stem(), "13");
  EXPECT_EQ(m_set.Put({SlotKind::Motion, 13}, Sound(14), 5).Why().kind, base::FailureKind::Full);
}

TEST_F(SoundSetPutTest, BehindTheLastTheListGrows) {
  ASSERT_TRUE(m_set.Put({SlotKind::Motion, 9}, Sound(9), 77));
  EXPECT_EQ(Motions(), "1 10, 2 20, 3 30, 4 40, 9 77");
}

TEST_F(SoundSetPutTest, ASingleSlotIsFilledOrReplaced) {
  ASSERT_TRUE(m_set.Put({SlotKind::Idle, 1}, Sound(8), 60));
  ASSERT_TRUE(m_set.Put({SlotKind::Idle, 1}, Sound(9), 70));
  EXPECT_EQ(m_set.At({SlotKind::Idle, 1}).FileNameAndPath().stem(), "9");
  EXPECT_EQ(m_set.At({SlotKind::Idle, 1}).Volume(), 70);
}

TEST_F(SoundSetPutTest, WhatIsNoSoundChangesNothing) {
  ASSERT_TRUE(m_set.Put({SlotKind::Idle, 1}, Sound(8), 60));
  const auto bad = support::WriteBytes(m_folder / "bad.lsu", "no sound");
  const std::string before = m_set.UndoText();
  EXPECT_EQ(m_set.Put({SlotKind::Motion, 2}, bad, 50).Why().kind, base::FailureKind::NotValid);
  EXPECT_FALSE(m_set.Put({SlotKind::Idle, 1}, bad, 50));
  EXPECT_EQ(Motions(), "1 10, 2 20, 3 30, 4 40");
  EXPECT_EQ(m_set.At({SlotKind::Idle, 1}).Volume(), 60);
  EXPECT_EQ(m_set.UndoText(), before);
}

TEST_F(SoundSetPutTest, AMissingSoundsPlaceIsFilled) {
  support::SoundSet written(m_folder.Path());
  written.AddOneEach(100);
  written.Add(SlotKind::Motion, 111, {.volume = 33});
  const auto file = written.WriteConfiguration("set.lscfg");
  std::filesystem::remove(written.sounds[4].path);
  ASSERT_EQ(written.sounds[4].slot, "motion");
  ASSERT_TRUE(m_set.Load(file).valid);
  ASSERT_EQ(m_set.AllMissing().All().size(), 1U);
  ASSERT_TRUE(m_set.Put(m_set.AllMissing().All()[0].place, Sound(9), 44));
  EXPECT_TRUE(m_set.AllMissing().IsEmpty());
  EXPECT_EQ(Motions(), "9 44, motion 2 33");
}

}  // namespace
}  // namespace kestrin::core::sound
