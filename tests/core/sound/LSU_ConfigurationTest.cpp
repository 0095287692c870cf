// SPDX-License-Identifier: MIT
#include "core/sound/LSU_Configuration.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "support/SoundSet.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

using support::AddSound;
using support::TemporaryFolder;

constexpr SlotKind kSingleSlots[] = {SlotKind::Boot, SlotKind::PwrOn, SlotKind::PwrOff, SlotKind::Idle};
constexpr SlotKind kLists[] = {SlotKind::Motion, SlotKind::Impact, SlotKind::Lockup};

class LSU_ConfigurationTest : public testing::Test {
 protected:
  bool Add(SlotKind kind, const std::string& name, std::size_t samples = 100, std::int16_t peak = 20000) {
    return AddSound(m_configuration, m_folder, kind, name, samples, peak);
  }

  TemporaryFolder m_folder;
  LSU_Configuration m_configuration;
};

TEST_F(LSU_ConfigurationTest, StartsEmptyWithTheTableAtAddress12) {
  EXPECT_EQ(LSU_Configuration::Nr_Base, 12);
  EXPECT_EQ(m_configuration.TotalNrOfSamples(), 0);
  EXPECT_EQ(m_configuration.NrOfMt(), 0);
  EXPECT_EQ(m_configuration.NrOfImp(), 0);
  EXPECT_EQ(m_configuration.NrOfLk(), 0);
  for (const SlotKind kind : kSingleSlots) {
    EXPECT_EQ(m_configuration.Count(kind), 0);
    EXPECT_EQ(m_configuration.FileAt(kind).NrOfSamples(), 0);
    EXPECT_EQ(m_configuration.GetVolume(kind, 1), 100);
  }
}

TEST_F(LSU_ConfigurationTest, ASingleSlotTakesOneFileAndTheNextReplacesItInTheTotal) {
  for (const SlotKind kind : kSingleSlots) {
    const auto before = m_configuration.TotalNrOfSamples();
    EXPECT_TRUE(Add(kind, "old.lsu", 100));
    EXPECT_EQ(m_configuration.TotalNrOfSamples(), before + 100);
    EXPECT_TRUE(Add(kind, "new.lsu", 77));
    EXPECT_EQ(m_configuration.TotalNrOfSamples(), before + 77);
    EXPECT_EQ(m_configuration.FileAt(kind).FileNameAndPath(), m_folder / "new.lsu");
    EXPECT_EQ(m_configuration.Count(kind), 1);
  }
}

TEST_F(LSU_ConfigurationTest, ASingleSlotWhoseNewFileIsRefusedIsResetButTheTotalStays) {
  ASSERT_TRUE(Add(SlotKind::Boot, "boot.lsu", 100));
  EXPECT_FALSE(m_configuration.AddFile(m_folder / "none.lsu", SlotKind::Boot));
  EXPECT_EQ(m_configuration.TotalNrOfSamples(), 100);
  EXPECT_EQ(m_configuration.FileAt(SlotKind::Boot).NrOfSamples(), 0);
  EXPECT_EQ(m_configuration.Count(SlotKind::Boot), 0);
  // What is added next replaces the 0 samples that the slot now has.
  EXPECT_TRUE(Add(SlotKind::Boot, "boot.lsu", 60));
  EXPECT_EQ(m_configuration.TotalNrOfSamples(), 160);
}

TEST_F(LSU_ConfigurationTest, AListTakesUpTo12FilesInTheOrderTheyCome) {
  std::int64_t total = 0;
  for (const SlotKind kind : kLists) {
    for (int i = 1; i <= kListCapacity; ++i) {
      const auto samples = static_cast<std::size_t>(50 + i);
      EXPECT_TRUE(Add(kind, std::to_string(i) + ".lsu", samples));
      total += 50 + i;
      EXPECT_EQ(m_configuration.Count(kind), i);
      EXPECT_EQ(m_configuration.TotalNrOfSamples(), total);
    }
    for (int i = 1; i <= kListCapacity; ++i) EXPECT_EQ(m_configuration.FileAt(kind, i).NrOfSamples(), 50 + i);
    EXPECT_THROW((void)Add(kind, "13.lsu"), std::out_of_range);
    EXPECT_EQ(m_configuration.Count(kind), kListCapacity);
  }
  EXPECT_EQ(m_configuration.NrOfMt(), 12);
  EXPECT_EQ(m_configuration.NrOfImp(), 12);
  EXPECT_EQ(m_configuration.NrOfLk(), 12);
}

TEST_F(LSU_ConfigurationTest, AListThatRefusesAFileStaysAsItWas) {
  for (const SlotKind kind : kLists) {
    ASSERT_TRUE(Add(kind, "a.lsu", 100));
    const auto total = m_configuration.TotalNrOfSamples();
    EXPECT_FALSE(m_configuration.AddFile(m_folder / "none.lsu", kind));
    EXPECT_EQ(m_configuration.Count(kind), 1);
    EXPECT_EQ(m_configuration.TotalNrOfSamples(), total);
    EXPECT_TRUE(Add(kind, "b.lsu", 80));
    EXPECT_EQ(m_configuration.FileAt(kind, 2).FileNameAndPath(), m_folder / "b.lsu");
  }
}

TEST_F(LSU_ConfigurationTest, ANumberThatIsNoSlotTakesNoFile) {
  const auto path = support::WriteSoundFile(m_folder / "a.lsu", std::vector<std::int16_t>(100, 1));
  ASSERT_TRUE(LSU_Configuration().AddFile(path, SlotKind::Boot));
  for (const int number : {-1, 0, 8}) EXPECT_FALSE(m_configuration.AddFile(path, static_cast<SlotKind>(number)));
  EXPECT_EQ(m_configuration.TotalNrOfSamples(), 0);
}

TEST_F(LSU_ConfigurationTest, EachListIsReachedByItsOwnName) {
  ASSERT_TRUE(Add(SlotKind::Motion, "m.lsu"));
  ASSERT_TRUE(Add(SlotKind::Impact, "i.lsu"));
  ASSERT_TRUE(Add(SlotKind::Lockup, "l.lsu"));
  EXPECT_EQ(m_configuration.GetMtFile(1).FileNameAndPath(), m_folder / "m.lsu");
  EXPECT_EQ(m_configuration.GetImpFile(1).FileNameAndPath(), m_folder / "i.lsu");
  EXPECT_EQ(m_configuration.GetLkFile(1).FileNameAndPath(), m_folder / "l.lsu");
  EXPECT_EQ(m_configuration.GetMtFile(12).NrOfSamples(), 0);
}

TEST_F(LSU_ConfigurationTest, AListHasPositions1To12Only) {
  for (const int position : {-1, 0, 13}) {
    EXPECT_THROW((void)m_configuration.GetMtFile(position), std::out_of_range);
    EXPECT_THROW((void)m_configuration.GetImpFile(position), std::out_of_range);
    EXPECT_THROW((void)m_configuration.GetLkFile(position), std::out_of_range);
    for (const SlotKind kind : kLists) {
      EXPECT_THROW((void)m_configuration.GetVolume(kind, position), std::out_of_range);
      EXPECT_THROW(m_configuration.SetVolume(kind, position, 1), std::out_of_range);
    }
  }
}

TEST_F(LSU_ConfigurationTest, VolumesBelongToTheAddressedFile) {
  std::int16_t volume = 10;
  for (const SlotKind kind : kLists)
    for (const int position : {1, 2, 12}) m_configuration.SetVolume(kind, position, volume++);
  // The position does not count for single slots.
  for (const SlotKind kind : kSingleSlots) m_configuration.SetVolume(kind, 0, volume++);
  volume = 10;
  for (const SlotKind kind : kLists)
    for (const int position : {1, 2, 12}) {
      EXPECT_EQ(m_configuration.GetVolume(kind, position), volume);
      EXPECT_EQ(m_configuration.FileAt(kind, position).Volume(), volume++);
    }
  for (const SlotKind kind : kSingleSlots) EXPECT_EQ(m_configuration.GetVolume(kind, 99), volume++);
}

TEST_F(LSU_ConfigurationTest, RemovingEmptiesASingleSlot) {
  for (const SlotKind kind : kSingleSlots) ASSERT_TRUE(Add(kind, "a.lsu", 100));
  std::int64_t total = 400;
  for (const SlotKind kind : kSingleSlots) {
    m_configuration.SetVolume(kind, 1, 33);
    m_configuration.RemoveFile(1, kind);
    total -= 100;
    EXPECT_EQ(m_configuration.TotalNrOfSamples(), total);
    EXPECT_EQ(m_configuration.Count(kind), 0);
    EXPECT_TRUE(m_configuration.FileAt(kind).FileNameAndPath().empty());
    EXPECT_EQ(m_configuration.GetVolume(kind, 1), 33);
    // An empty one stays empty.
    m_configuration.RemoveFile(1, kind);
    EXPECT_EQ(m_configuration.TotalNrOfSamples(), total);
  }
}

TEST_F(LSU_ConfigurationTest, RemovingAListEntryMovesFourThingsAndNoMore) {
  for (const SlotKind kind : kLists) {
    const auto before = m_configuration.TotalNrOfSamples();
    for (int i = 1; i <= 4; ++i) {
      ASSERT_TRUE(Add(kind, std::to_string(i) + ".lsu", static_cast<std::size_t>(100 * i),
                      static_cast<std::int16_t>(1000 * i)));
      LSU_SoundFile& file = m_configuration.FileAt(kind, i);
      file.SetVolume(static_cast<std::int16_t>(20 + i));
      ASSERT_TRUE(file.Code());
      file.SetStartAddress(5000 * i);
    }
    const std::uint16_t streamOf2 = m_configuration.FileAt(kind, 2).GetFileCRC();
    const std::uint16_t streamOf3 = m_configuration.FileAt(kind, 3).GetFileCRC();
    ASSERT_NE(streamOf2, streamOf3);

    m_configuration.RemoveFile(2, kind);
    EXPECT_EQ(m_configuration.Count(kind), 3);
    EXPECT_EQ(m_configuration.TotalNrOfSamples(), before + 100 + 300 + 400);
    struct Row {
      int position, from;
    };
    for (const Row& row : {Row{1, 1}, Row{2, 3}, Row{3, 4}}) {
      const LSU_SoundFile& file = m_configuration.FileAt(kind, row.position);
      EXPECT_EQ(file.FileNameAndPath(), m_folder / (std::to_string(row.from) + ".lsu"));
      EXPECT_EQ(file.NrOfSamples(), 100 * row.from);
      EXPECT_EQ(file.NrOfBytes(), 150 * row.from);
      EXPECT_EQ(file.StartAddress(), 5000 * row.from);
      EXPECT_EQ(file.Volume(), 20 + row.position);
      EXPECT_EQ(file.Peak(), 1000 * row.position);
    }
    EXPECT_EQ(m_configuration.FileAt(kind, 2).GetFileCRC(), streamOf2);
    EXPECT_EQ(m_configuration.FileAt(kind, 3).GetFileCRC(), streamOf3);
  }
}

TEST_F(LSU_ConfigurationTest, RemovingTheLastEntryOfAListEmptiesIt) {
  for (const SlotKind kind : kLists) {
    ASSERT_TRUE(Add(kind, "a.lsu"));
    m_configuration.RemoveFile(1, kind);
    EXPECT_EQ(m_configuration.Count(kind), 0);
    EXPECT_EQ(m_configuration.TotalNrOfSamples(), 0);
    EXPECT_EQ(m_configuration.FileAt(kind, 1).NrOfSamples(), 0);
    EXPECT_TRUE(m_configuration.FileAt(kind, 1).FileNameAndPath().empty());
  }
}

TEST_F(LSU_ConfigurationTest, RemovingFromAFullListFreesItsLastPosition) {
  for (int i = 1; i <= kListCapacity; ++i) ASSERT_TRUE(Add(SlotKind::Impact, std::to_string(i) + ".lsu"));
  m_configuration.RemoveFile(1, SlotKind::Impact);
  EXPECT_EQ(m_configuration.NrOfImp(), 11);
  EXPECT_TRUE(Add(SlotKind::Impact, "again.lsu"));
  EXPECT_EQ(m_configuration.GetImpFile(12).FileNameAndPath(), m_folder / "again.lsu");
}

TEST_F(LSU_ConfigurationTest, AnEntryThatIsNotThereCannotBeRemoved) {
  ASSERT_TRUE(Add(SlotKind::Motion, "a.lsu", 100));
  for (const int entry : {-1, 0, 2, 12, 13})
    EXPECT_THROW(m_configuration.RemoveFile(entry, SlotKind::Motion), std::out_of_range) << entry;
  EXPECT_THROW(m_configuration.RemoveFile(1, SlotKind::Lockup), std::out_of_range);
  EXPECT_THROW(m_configuration.RemoveFile(1, static_cast<SlotKind>(8)), std::out_of_range);
  EXPECT_EQ(m_configuration.NrOfMt(), 1);
  EXPECT_EQ(m_configuration.TotalNrOfSamples(), 100);
}

TEST_F(LSU_ConfigurationTest, TheFirstMissingPieceIsNamedInTheOrderOfImportance) {
  struct Row {
    SlotKind next;
    int code;
    const char* message;
  };
  constexpr Row kRows[] = {{SlotKind::Boot, 1, "Boot file is missing"},
                           {SlotKind::PwrOn, 2, "Power On file is missing"},
                           {SlotKind::PwrOff, 3, "Power Off file is missing"},
                           {SlotKind::Idle, 7, "Idle file is missing"},
                           {SlotKind::Motion, 4, "At least one motion file is required"},
                           {SlotKind::Impact, 5, "At least one impact file is required"},
                           {SlotKind::Lockup, 6, "At least one locku-up file is required"}};
  // Filled from the most important piece on, each step uncovers the next.
  for (const Row& row : kRows) {
    EXPECT_EQ(m_configuration.CheckIntegrity(), row.code);
    EXPECT_EQ(LSU_Configuration::IntegrityMessage(row.code), row.message);
    ASSERT_TRUE(Add(row.next, "a.lsu"));
  }
  EXPECT_EQ(m_configuration.CheckIntegrity(), 0);
  EXPECT_EQ(LSU_Configuration::IntegrityMessage(0), "");
  // Emptied from the least important piece on, each step covers the one before.
  for (std::size_t i = std::size(kRows); i-- > 0;) {
    m_configuration.RemoveFile(1, kRows[i].next);
    EXPECT_EQ(m_configuration.CheckIntegrity(), kRows[i].code);
  }
}

TEST_F(LSU_ConfigurationTest, OnePieceMissingFromAFullSetIsNamed) {
  for (const Slot& missing : kSlots) {
    LSU_Configuration configuration;
    support::FillEverySlot(configuration, m_folder);
    configuration.RemoveFile(1, missing.kind);
    EXPECT_EQ(configuration.CheckIntegrity(), static_cast<int>(missing.kind));
  }
}

TEST_F(LSU_ConfigurationTest, TheCapacityIsTheOwnersToSet) {
  m_configuration.SetMaxNrOfSamples(2796202);
  EXPECT_EQ(m_configuration.MaxNrOfSamples(), 2796202);
}

}  // namespace
}  // namespace kestrin::core::sound
