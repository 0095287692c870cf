// SPDX-License-Identifier: MIT
// The memory map and the file table.

#include <gtest/gtest.h>

#include <filesystem>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/sound/LSU_Configuration.h"
#include "support/ReferenceCoder.h"
#include "support/SoundSet.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

using support::AddSound;
using support::FillEverySlot;
using support::TemporaryFolder;

class LSU_ConfigurationLayout : public testing::Test {
 protected:
  bool Add(SlotKind kind, const std::string& name, std::size_t samples) {
    return AddSound(m_configuration, m_folder, kind, name, samples);
  }
  void MakeMap() {
    const base::Result<> result = m_configuration.MakeMemoryMap([](int) { return true; });
    ASSERT_TRUE(result) << result.Text();
  }

  TemporaryFolder m_folder;
  LSU_Configuration m_configuration;
};

TEST_F(LSU_ConfigurationLayout, StreamsFollowOneAnotherFrom512WithOneByteBetween) {
  // 666 samples are 999 bytes, 667 are 1002, 50 are 75.
  ASSERT_TRUE(Add(SlotKind::Lockup, "l1.lsu", 50));
  ASSERT_TRUE(Add(SlotKind::Impact, "i1.lsu", 50));
  ASSERT_TRUE(Add(SlotKind::Motion, "m1.lsu", 50));
  ASSERT_TRUE(Add(SlotKind::Motion, "m2.lsu", 667));
  ASSERT_TRUE(Add(SlotKind::Impact, "i2.lsu", 50));
  ASSERT_TRUE(Add(SlotKind::Idle, "idle.lsu", 50));
  ASSERT_TRUE(Add(SlotKind::PwrOff, "off.lsu", 50));
  ASSERT_TRUE(Add(SlotKind::PwrOn, "on.lsu", 667));
  ASSERT_TRUE(Add(SlotKind::Boot, "boot.lsu", 666));
  const std::int64_t needed = m_configuration.FlashBytesNeeded();
  MakeMap();

  struct Row {
    SlotKind kind;
    int position, address, length;
  };
  constexpr Row kRows[] = {
      {SlotKind::Boot, 1, 512, 999},   {SlotKind::PwrOn, 1, 1512, 1002}, {SlotKind::PwrOff, 1, 2515, 75},
      {SlotKind::Idle, 1, 2591, 75},   {SlotKind::Motion, 1, 2667, 75},  {SlotKind::Motion, 2, 2743, 1002},
      {SlotKind::Impact, 1, 3746, 75}, {SlotKind::Impact, 2, 3822, 75},  {SlotKind::Lockup, 1, 3898, 75}};
  const std::vector<SlotFile> files = m_configuration.FilesInFlashOrder();
  ASSERT_EQ(files.size(), std::size(kRows));
  for (std::size_t i = 0; i < files.size(); ++i) {
    EXPECT_EQ(files[i].kind, kRows[i].kind) << i;
    EXPECT_EQ(files[i].position, kRows[i].position) << i;
    EXPECT_EQ(files[i].file, &m_configuration.FileAt(kRows[i].kind, kRows[i].position)) << i;
    EXPECT_EQ(files[i].file->StartAddress(), kRows[i].address) << i;
    EXPECT_EQ(files[i].file->NrOfBytes(), kRows[i].length) << i;
  }
  EXPECT_EQ(needed, 3898 + 75);
}

TEST_F(LSU_ConfigurationLayout, EachFileIsCodedAtItsOwnVolume) {
  const support::SoundSet written = FillEverySlot(m_configuration, m_folder, 2);
  std::int16_t volume = 10;
  for (const SlotFile& entry : m_configuration.FilesInFlashOrder()) entry.file->SetVolume(volume++);
  MakeMap();
  ASSERT_EQ(m_configuration.FilesInFlashOrder().size(), written.sounds.size());
  volume = 10;
  for (const SlotFile& entry : m_configuration.FilesInFlashOrder()) {
    const auto& samples = written.sounds[static_cast<std::size_t>(volume - 10)].samples;
    std::vector<std::uint8_t> stream;
    ASSERT_TRUE(entry.file->GetBytes(stream, 0, static_cast<std::size_t>(entry.file->NrOfBytes())));
    EXPECT_EQ(stream, support::ReferenceStream(samples, 20000, volume)) << volume;
    ++volume;
  }
}

TEST_F(LSU_ConfigurationLayout, ProgressCountsSamplesInPercentHalvesToEven) {
  // 800 samples in all: 100 are 12.5 %, 300 are 37.5 %, 500 are 62.5 %, 700 are 87.5 %.
  for (const Slot& slot : kSlots) ASSERT_TRUE(Add(slot.kind, std::string(slot.name) + ".lsu", 100));
  ASSERT_TRUE(Add(SlotKind::Lockup, "l2.lsu", 100));
  std::vector<int> percents;
  const base::Result<> result = m_configuration.MakeMemoryMap([&](int percent) {
    percents.push_back(percent);
    return true;
  });
  EXPECT_TRUE(result);
  EXPECT_EQ(percents, (std::vector<int>{12, 25, 38, 50, 62, 75, 88, 100}));
}

TEST_F(LSU_ConfigurationLayout, StoppedItKeepsWhatIsCodedAndGivesNoAddresses) {
  FillEverySlot(m_configuration, m_folder);
  for (const SlotFile& entry : m_configuration.FilesInFlashOrder()) entry.file->SetStartAddress(-7);
  int steps = 0;
  const base::Result<> result = m_configuration.MakeMemoryMap([&](int) { return ++steps < 3; });
  ASSERT_FALSE(result);
  EXPECT_EQ(result.Why().kind, base::FailureKind::Cancelled);
  EXPECT_EQ(steps, 3);
  const std::vector<SlotFile> files = m_configuration.FilesInFlashOrder();
  for (std::size_t i = 0; i < files.size(); ++i) {
    EXPECT_EQ(files[i].file->NrOfBytes() > 0, i < 3) << i;
    EXPECT_EQ(files[i].file->StartAddress(), -7) << i;
  }
}

TEST_F(LSU_ConfigurationLayout, AStopAfterTheLastFileIsStillAStop) {
  FillEverySlot(m_configuration, m_folder);
  const base::Result<> result = m_configuration.MakeMemoryMap([](int percent) { return percent < 100; });
  ASSERT_FALSE(result);
  EXPECT_EQ(result.Why().kind, base::FailureKind::Cancelled);
}

TEST_F(LSU_ConfigurationLayout, AFileThatIsGoneOrTooLoudIsNamed) {
  FillEverySlot(m_configuration, m_folder, 2);
  m_configuration.SetVolume(SlotKind::Impact, 2, 103);
  const std::string tooLoud = (m_folder / "impact 2.lsu").string();
  base::Result<> result = m_configuration.MakeMemoryMap([](int) { return true; });
  ASSERT_FALSE(result);
  EXPECT_EQ(result.Why().kind, base::FailureKind::NotValid);
  EXPECT_EQ(result.Text(), "\"" + tooLoud + "\" is too loud at 103 %. Lower its volume to 102 % or less.");

  std::filesystem::remove(m_folder / "idle.lsu");
  result = m_configuration.MakeMemoryMap([](int) { return true; });
  ASSERT_FALSE(result);
  EXPECT_EQ(result.Why().kind, base::FailureKind::NotFound);
  EXPECT_EQ(result.Text(),
            "\"" + (m_folder / "idle.lsu").string() + "\" is no longer there. Put it back or choose another sound.");
}

TEST_F(LSU_ConfigurationLayout, ThePumpGetsItsTurnWhileFilesAreCoded) {
  FillEverySlot(m_configuration, m_folder);
  int turns = 0;
  ASSERT_TRUE(m_configuration.MakeMemoryMap({}, [&] { ++turns; }));
  EXPECT_GE(turns, 7);
}

TEST_F(LSU_ConfigurationLayout, AnEmptyConfigurationHasEmptyStreams) {
  EXPECT_EQ(m_configuration.FlashBytesNeeded(), 515);
  std::vector<int> percents;
  ASSERT_TRUE(m_configuration.MakeMemoryMap([&](int percent) { return percents.push_back(percent), true; }));
  EXPECT_EQ(percents, (std::vector<int>{100, 100, 100, 100}));
  // Four streams of no bytes, each one byte behind the one before.
  const std::vector<std::uint8_t> expected{0, 0, 0, 0, 0, 2, 0, 0, 0, 0, 0, 2, 1, 0, 0,
                                           0, 0, 2, 2, 0, 0, 0, 0, 2, 3, 0, 0, 0, 0, 14};
  EXPECT_EQ(m_configuration.GetFileTable(), expected);
}

TEST_F(LSU_ConfigurationLayout, ASlotThatWasEmptiedHasNoStreamAnyMore) {
  FillEverySlot(m_configuration, m_folder);
  MakeMap();
  m_configuration.RemoveFile(1, SlotKind::Boot);
  MakeMap();
  EXPECT_EQ(m_configuration.FileAt(SlotKind::Boot).NrOfBytes(), 0);
  EXPECT_EQ(m_configuration.FileAt(SlotKind::PwrOn).StartAddress(), 513);
}

TEST_F(LSU_ConfigurationLayout, TheTableHoldsCountsAddressesLengthsAndTheirSum) {
  ASSERT_TRUE(Add(SlotKind::Boot, "boot.lsu", 666));     // 999 bytes from 512
  ASSERT_TRUE(Add(SlotKind::PwrOn, "on.lsu", 100));      // 150 from 1512
  ASSERT_TRUE(Add(SlotKind::PwrOff, "off.lsu", 60000));  // 90000 from 1663
  ASSERT_TRUE(Add(SlotKind::Idle, "idle.lsu", 50));      // 75 from 91664
  ASSERT_TRUE(Add(SlotKind::Motion, "m1.lsu", 50));      // 75 from 91740
  ASSERT_TRUE(Add(SlotKind::Motion, "m2.lsu", 51));      // 78 from 91816
  ASSERT_TRUE(Add(SlotKind::Impact, "i1.lsu", 52));      // 78 from 91895
  ASSERT_TRUE(Add(SlotKind::Lockup, "l1.lsu", 53));      // 81 from 91974
  MakeMap();
  std::vector<std::uint8_t> expected{
      2,    1,    1,    0,    0x00, 0x02, 0x00, 0x00, 0x03, 0xE7,  // 512, 999
      0x00, 0x05, 0xE8, 0x00, 0x00, 0x96,                          // 1512, 150
      0x00, 0x06, 0x7F, 0x01, 0x5F, 0x90,                          // 1663, 90000
      0x01, 0x66, 0x10, 0x00, 0x00, 0x4B,                          // 91664, 75
      0x01, 0x66, 0x5C, 0x00, 0x00, 0x4B,                          // 91740, 75
      0x01, 0x66, 0xA8, 0x00, 0x00, 0x4E,                          // 91816, 78
      0x01, 0x66, 0xF7, 0x00, 0x00, 0x4E,                          // 91895, 78
      0x01, 0x67, 0x46, 0x00, 0x00, 0x51,                          // 91974, 81
  };
  const int sum = std::accumulate(expected.begin(), expected.end(), 0);
  ASSERT_LT(sum, 65536);
  expected.push_back(static_cast<std::uint8_t>(sum / 256));
  expected.push_back(static_cast<std::uint8_t>(sum % 256));
  EXPECT_EQ(m_configuration.GetFileTable(), expected);
}

TEST_F(LSU_ConfigurationLayout, TheTableGrowsBySixBytesForEachListFile) {
  FillEverySlot(m_configuration, m_folder);
  MakeMap();
  EXPECT_EQ(m_configuration.GetFileTable().size(), 48U);
  LSU_Configuration full;
  FillEverySlot(full, m_folder, kListCapacity);
  ASSERT_TRUE(full.MakeMemoryMap({}));
  EXPECT_EQ(full.GetFileTable().size(), 30U + 6 * 36);
}

TEST_F(LSU_ConfigurationLayout, TheBytesNeededAreThoseOfTheMapAlsoForOddCountsAndFullLists) {
  for (const int entries : {1, 5, kListCapacity}) {
    LSU_Configuration configuration;
    FillEverySlot(configuration, m_folder, entries);
    ASSERT_TRUE(AddSound(configuration, m_folder, SlotKind::Boot, "odd.lsu", 333));
    const std::int64_t needed = configuration.FlashBytesNeeded();
    ASSERT_TRUE(configuration.MakeMemoryMap({}));
    const LSU_SoundFile& last = configuration.GetLkFile(entries);
    EXPECT_EQ(needed, last.StartAddress() + last.NrOfBytes()) << entries;
  }
}

TEST_F(LSU_ConfigurationLayout, AListEntryThatMovedIsCodedWithVolumeAndPeakOfItsPosition) {
  FillEverySlot(m_configuration, m_folder);
  ASSERT_TRUE(AddSound(m_configuration, m_folder, SlotKind::Motion, "quiet.lsu", 80, 15000));
  m_configuration.SetVolume(SlotKind::Motion, 1, 70);
  m_configuration.SetVolume(SlotKind::Motion, 2, 30);
  m_configuration.RemoveFile(1, SlotKind::Motion);
  MakeMap();
  std::vector<std::uint8_t> stream;
  ASSERT_TRUE(m_configuration.GetMtFile(1).GetBytes(stream, 0, 120));
  EXPECT_EQ(stream, support::ReferenceStream(support::SomeSamples(80, 15000), 20000, 70));
}

}  // namespace
}  // namespace kestrin::core::sound
