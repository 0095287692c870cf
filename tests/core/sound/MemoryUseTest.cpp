// SPDX-License-Identifier: MIT
#include "core/sound/MemoryUse.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "support/SoundSet.h"

namespace kestrin::core::sound {
namespace {

using support::AddSound;
using support::TemporaryFolder;

TEST(MemoryUseTest, AnEmptySetTakesNothing) {
  LSU_Configuration configuration;
  configuration.SetMaxNrOfSamples(1000);
  const MemoryUse use = MemoryUse::Of(configuration);
  EXPECT_EQ(use.total, 0);
  EXPECT_EQ(use.capacity, 1000);
  EXPECT_TRUE(use.Fits());
  // The erase, and one block of table: less than another second.
  EXPECT_EQ(use.downloadSeconds, 31);
}

TEST(MemoryUseTest, EverySlotShowsItsShare) {
  TemporaryFolder folder;
  LSU_Configuration configuration;
  configuration.SetMaxNrOfSamples(4000);
  ASSERT_TRUE(AddSound(configuration, folder, SlotKind::Boot, "a.lsu", 500));
  ASSERT_TRUE(AddSound(configuration, folder, SlotKind::Motion, "b.lsu", 700));
  ASSERT_TRUE(AddSound(configuration, folder, SlotKind::Motion, "c.lsu", 300));
  ASSERT_TRUE(AddSound(configuration, folder, SlotKind::Lockup, "d.lsu", 100));
  const MemoryUse use = MemoryUse::Of(configuration);
  EXPECT_EQ(use.samples, (std::array<std::int64_t, 7>{500, 0, 0, 0, 1000, 0, 100}));
  EXPECT_EQ(use.total, 1600);
  EXPECT_DOUBLE_EQ(use.Share(use.samples[4]), 0.25);
  EXPECT_DOUBLE_EQ(MemoryUse::Seconds(24000), 0.5);
}

TEST(MemoryUseTest, TheDownloadTakesEighteenMillisecondsABlock) {
  TemporaryFolder folder;
  LSU_Configuration configuration;
  configuration.SetMaxNrOfSamples(2793120);
  // 480,000 samples are 720,000 bytes: 703 whole blocks and a rest of 128 bytes. With the table 705 blocks, 12.69 s.
  ASSERT_TRUE(AddSound(configuration, folder, SlotKind::Boot, "a.lsu", 480000));
  EXPECT_EQ(MemoryUse::Of(configuration).downloadSeconds, 30 + 13);
  // 1,364 samples are 2,046 bytes: a whole block and a rest of 1,022, which goes as two. 708 blocks, 12.744 s; and 20
  // such sounds 765 blocks, 13.77 s.
  for (int file = 0; file < 12; ++file) ASSERT_TRUE(AddSound(configuration, folder, SlotKind::Motion, "b.lsu", 1364));
  for (int file = 0; file < 8; ++file) ASSERT_TRUE(AddSound(configuration, folder, SlotKind::Impact, "b.lsu", 1364));
  EXPECT_EQ(MemoryUse::Of(configuration).downloadSeconds, 30 + 14);
}

TEST(MemoryUseTest, SoundsOfNoConfigurationCountLikeThoseOfOne) {
  TemporaryFolder folder;
  LSU_Configuration configuration;
  configuration.SetMaxNrOfSamples(2793120);
  std::vector<MemoryUse::Sound> sounds;
  for (const auto& [kind, samples] :
       {std::pair(SlotKind::Motion, 480000), std::pair(SlotKind::Idle, 1364), std::pair(SlotKind::Motion, 2000)}) {
    ASSERT_TRUE(AddSound(configuration, folder, kind, "a.lsu", static_cast<std::size_t>(samples)));
    sounds.push_back({kind, samples});
  }
  const MemoryUse use = MemoryUse::Of(sounds, 2793120);
  // In the order of the slots: Idle, Motion. 703 + 1, 2 and 2 + 1 blocks and the table: 710 of 18 ms, 12.78 s.
  EXPECT_EQ(use.samples, (std::array<std::int64_t, 7>{0, 0, 0, 1364, 482000, 0, 0}));
  EXPECT_EQ(use.total, 483364);
  EXPECT_EQ(use.downloadSeconds, 30 + 13);
  EXPECT_EQ(MemoryUse::Of(configuration).downloadSeconds, use.downloadSeconds);
  EXPECT_EQ(MemoryUse::Of(configuration).samples, use.samples);
  EXPECT_EQ(MemoryUse::Of(sounds, 483363).downloadSeconds, 0);
  EXPECT_EQ(MemoryUse::Of(sounds, 483363).Excess(), 1);
}

TEST(MemoryUseTest, ASetThatDoesNotFitSaysByHowMuch) {
  TemporaryFolder folder;
  LSU_Configuration configuration;
  ASSERT_TRUE(AddSound(configuration, folder, SlotKind::Boot, "a.lsu", 500));
  configuration.SetMaxNrOfSamples(500);
  EXPECT_TRUE(MemoryUse::Of(configuration).Fits());
  EXPECT_EQ(MemoryUse::Of(configuration).Excess(), 0);
  configuration.SetMaxNrOfSamples(499);
  EXPECT_FALSE(MemoryUse::Of(configuration).Fits());
  EXPECT_EQ(MemoryUse::Of(configuration).Excess(), 1);
  EXPECT_EQ(MemoryUse::Of(configuration).downloadSeconds, 0);
  configuration.SetMaxNrOfSamples(0);
  EXPECT_DOUBLE_EQ(MemoryUse::Of(configuration).Share(500), 0);
}

}  // namespace
}  // namespace kestrin::core::sound
