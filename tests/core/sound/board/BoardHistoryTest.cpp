// SPDX-License-Identifier: MIT
#include "core/sound/board/BoardHistory.h"

#include <gtest/gtest.h>

#include "core/sound/SoundSet.h"
#include "support/RecordingDisk.h"
#include "support/SoundSet.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr HistoryEntry::Time kNoon = std::chrono::sys_days(std::chrono::year(2026) / 11 / 22) + 12h + 5min + 7s;
constexpr device::AccParam kParameters{180, 6, 700, 8, 20, 50};

class BoardHistoryTest : public ::testing::Test {
 protected:
  BoardHistoryTest() { EXPECT_TRUE(m_set.configuration.MakeMemoryMap({})); }

  base::Result<> Add(HistoryEntry::Time time = kNoon) {
    return m_history.Add(m_set.configuration, m_folder / "Ember.lscfg", "4B535401", kParameters, time);
  }
  [[nodiscard]] std::size_t Files() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(m_place), fs::directory_iterator()));
  }

  support::TemporaryFolder m_folder;
  support::CompleteSet m_set{100};
  support::RecordingDisk m_disk;
  fs::path m_place = m_folder / "data" / BoardHistory::kFolderName;
  BoardHistory m_history{m_place, m_disk};
};

TEST_F(BoardHistoryTest, AnEntryTellsWhatTheBoardGot) {
  m_set.configuration.SetVolume(SlotKind::Idle, 1, 64);
  ASSERT_TRUE(m_set.configuration.MakeMemoryMap({}));
  ASSERT_TRUE(Add());
  const std::vector<HistoryEntry> entries = m_history.Entries();
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].time, kNoon);
  EXPECT_EQ(entries[0].serialNumber, "4B535401");
  EXPECT_EQ(entries[0].parameters, kParameters);
  EXPECT_EQ(entries[0].set.name, "Ember");
  EXPECT_EQ(entries[0].set.path, m_folder / "Ember.lscfg");
  EXPECT_EQ(entries[0].file.filename(), "2026-11-22 120507 4B535401.lscfg");
  const SetImage sent = SetImage::Of(m_set.configuration, m_folder / "Ember.lscfg");
  const auto image = entries[0].set.Image();
  ASSERT_TRUE(image);
  EXPECT_EQ(image->table, sent.table);
  EXPECT_EQ(image->sounds, sent.sounds);
  EXPECT_EQ(entries[0].set.At({SlotKind::Idle, 1})->volume, 64);
  EXPECT_EQ(entries[0].set.At({SlotKind::Idle, 1})->path, m_set.configuration.FileAt(SlotKind::Idle).FileNameAndPath());
}

TEST_F(BoardHistoryTest, AnEntryOpensAsASetThatNobodyHasSaved) {
  m_set.configuration.SetVolume(SlotKind::Idle, 1, 64);
  ASSERT_TRUE(Add());
  LSU_Configuration configuration;
  SoundSet set(configuration);
  const LoadResult result = set.LoadCopy(m_history.Entries().at(0).file);
  ASSERT_TRUE(result.valid) << result.valid.Text();
  EXPECT_TRUE(result.failed.empty());
  EXPECT_EQ(configuration.GetVolume(SlotKind::Idle, 1), 64);
  EXPECT_EQ(configuration.Count(SlotKind::Lockup), 1);
  EXPECT_TRUE(set.Path().empty());
  EXPECT_TRUE(set.IsModified());
  set.Undo();
  EXPECT_EQ(configuration.TotalNrOfSamples(), 0);
}

TEST_F(BoardHistoryTest, TheLatestComesFirstAndTheOldestGo) {
  for (std::size_t i = 0; i < BoardHistory::kMost + 2; ++i) ASSERT_TRUE(Add(kNoon + std::chrono::minutes(i)));
  const std::vector<HistoryEntry> entries = m_history.Entries();
  ASSERT_EQ(entries.size(), BoardHistory::kMost);
  EXPECT_EQ(entries.front().time, kNoon + std::chrono::minutes(BoardHistory::kMost + 1));
  EXPECT_EQ(entries.back().time, kNoon + 2min);
  EXPECT_EQ(Files(), BoardHistory::kMost);
}

// A computer whose battery is empty wakes up in another year.
TEST_F(BoardHistoryTest, AnEntryStaysThoughTheClockWasSetBack) {
  for (std::size_t i = 0; i < BoardHistory::kMost; ++i) ASSERT_TRUE(Add(kNoon + std::chrono::minutes(i)));
  ASSERT_TRUE(Add(kNoon - 24h));
  EXPECT_EQ(m_history.Entries().size(), BoardHistory::kMost);
  EXPECT_EQ(m_history.Entries().back().time, kNoon - 24h);
  ASSERT_TRUE(Add(kNoon - 23h));
  EXPECT_EQ(m_history.Entries().back().time, kNoon - 23h);
  EXPECT_EQ(Files(), BoardHistory::kMost);
}

TEST_F(BoardHistoryTest, TwoInOneSecondAreTwo) {
  ASSERT_TRUE(Add());
  ASSERT_TRUE(Add());
  EXPECT_EQ(m_history.Entries().size(), 2U);
}

TEST_F(BoardHistoryTest, WhatCannotBeReadIsSkippedAndStays) {
  ASSERT_TRUE(Add());
  const std::string whole = support::ReadBytes(m_history.Entries().at(0).file);
  support::WriteBytes(m_place / "2020-01-01 000000 X.lscfg", "BOOT\r\n");
  support::WriteBytes(m_place / "2020-01-01 000001 X.lscfg", whole.substr(0, whole.find("parameters") + 14));
  std::string bent = whole;
  bent.replace(bent.find("2026-11-22T"), 10, "2026-13-22");
  support::WriteBytes(m_place / "2020-01-01 000002 X.lscfg", bent);
  fs::create_directories(m_place / "2020-01-01 000003 X.lscfg");
  EXPECT_EQ(m_history.Entries().size(), 1U);
  for (std::size_t i = 0; i < BoardHistory::kMost + 1; ++i) ASSERT_TRUE(Add(kNoon + std::chrono::minutes(i)));
  EXPECT_EQ(Files(), BoardHistory::kMost + 4) << "what is nobody's entry was removed";
}

TEST_F(BoardHistoryTest, AFullDiskLeavesNothing) {
  m_disk.onFlush = [](const fs::path&) { return std::make_error_code(std::errc::no_space_on_device); };
  const base::Result<> added = Add();
  ASSERT_FALSE(added);
  EXPECT_NE(added.Text().find("could not be remembered"), std::string::npos);
  EXPECT_EQ(Files(), 0U);
}

TEST_F(BoardHistoryTest, WithoutAFolderNothingIsKept) {
  BoardHistory none({}, m_disk);
  EXPECT_TRUE(none.Add(m_set.configuration, {}, "1", {}, kNoon));
  EXPECT_TRUE(none.Entries().empty());
}

}  // namespace
}  // namespace kestrin::core::sound
