// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/sound/SoundSet.h"
#include "support/RecordingDisk.h"
#include "support/SoundSetFixture.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;
using support::AnyDisk;
using support::ReadBytes;
using support::WriteBytes;

/// A set some of whose sounds are missing: motion 2 and 4 of 5, and the idle sound.
class SoundSetMissingTest : public support::SoundSetFixture {
 protected:
  SoundSetMissingTest() {
    fs::create_directories(folder / "sets");
    Sound("boot.lsu", 100);
    for (const char* const name : {"m1.lsu", "m3.lsu", "m5.lsu"}) Sound(name, 100);
    text = Entry("BOOT", "boot.lsu", 90) + "PWRON\r\n\r\n 100\r\nPWROFF\r\n\r\n 100\r\n" +
           Entry("IDLE", "idle.lsu", 60) + "MOTION-5\r\n" + Entry("", "m1.lsu", 10) + Entry("", "m2.lsu", 20) +
           Entry("", "m3.lsu", 30) + Entry("", "m4.lsu", 40) + Entry("", "m5.lsu", 50) + "IMPACT-0\r\nLOCKUP-0\r\n";
    WriteBytes(File(), text);
  }

  /// The set's file lies where nobody would look for sounds.
  [[nodiscard]] fs::path File() const { return folder / "sets" / "set.lscfg"; }
  [[nodiscard]] std::string Entry(const std::string& keyword, const std::string& name, int volume) const {
    return (keyword.empty() ? "" : keyword + "\r\n") + (folder / name).string() + "\r\n " + std::to_string(volume) +
           "\r\n";
  }
  void Load() {
    const LoadResult result = set.Load(File());
    ASSERT_TRUE(result.valid) << result.valid.Text();
    ASSERT_EQ(result.failed.size(), 3U);
  }
  /// All rows of a slot with their volumes, the missing ones in brackets, like "a.lsu@100 [b.lsu@80]".
  std::string Rows(SlotKind kind) const {
    std::string rows;
    for (int row = 1; row <= set.Rows(kind); ++row) {
      const SoundPlace place{kind, row};
      const MissingSound* const missing = set.AllMissing().At(place);
      const int volume = missing != nullptr ? missing->volume : set.At(place).Volume();
      const std::string sound = set.PathAt(place).filename().string() + "@" + std::to_string(volume);
      rows += (rows.empty() ? "" : " ") + (missing != nullptr ? "[" + sound + "]" : sound);
    }
    return rows;
  }
  /// The configuration must hold just the sounds that are there.
  void ExpectConsistent() const {
    std::int64_t total = 0;
    for (const Slot& slot : kSlots) {
      int held = 0;
      for (int row = 1; row <= set.Rows(slot.kind); ++row) held += static_cast<int>(set.Holds({slot.kind, row}));
      EXPECT_EQ(held, configuration.Count(slot.kind)) << slot.name;
      for (int position = 1; position <= configuration.Count(slot.kind); ++position)
        total += configuration.FileAt(slot.kind, position).NrOfSamples();
    }
    EXPECT_EQ(configuration.TotalNrOfSamples(), total);
  }

  std::string text;
};

constexpr const char* kMotion = "m1.lsu@10 [m2.lsu@20] m3.lsu@30 [m4.lsu@40] m5.lsu@50";

TEST_F(SoundSetMissingTest, KeepTheirRowsAndAreNoPartOfTheConfiguration) {
  Load();
  EXPECT_EQ(Rows(SlotKind::Motion), kMotion);
  EXPECT_EQ(Rows(SlotKind::Idle), "[idle.lsu@60]");
  EXPECT_EQ(configuration.NrOfMt(), 3);
  EXPECT_EQ(configuration.TotalNrOfSamples(), 400);
  // The first piece that is missing is the power on sound; with that and power off it would be the idle sound.
  EXPECT_EQ(configuration.CheckIntegrity(), 2);
  EXPECT_EQ(set.Add(SlotKind::PwrOn, folder / "m1.lsu").Text(), "");
  EXPECT_EQ(set.Add(SlotKind::PwrOff, folder / "m1.lsu").Text(), "");
  EXPECT_EQ(configuration.CheckIntegrity(), 7);
  EXPECT_THROW((void)set.At({SlotKind::Motion, 2}), std::out_of_range);
  EXPECT_THROW((void)set.At({SlotKind::Idle, 1}), std::out_of_range);
  EXPECT_EQ(set.At({SlotKind::Motion, 5}).FileNameAndPath(), folder / "m5.lsu");
  ExpectConsistent();
}

TEST_F(SoundSetMissingTest, ASetThatWasJustLoadedIsNotChanged) {
  Load();
  EXPECT_FALSE(set.IsModified());
  set.Remove(SlotKind::Motion, 4);
  EXPECT_TRUE(set.IsModified());
  set.Undo();
  EXPECT_FALSE(set.IsModified());
}

TEST_F(SoundSetMissingTest, KeptOnesAreSavedWithTheirPathsAndVolumesInTheirPlaces) {
  Load();
  ASSERT_EQ(set.Save(folder / "sets" / "copy.lscfg", AnyDisk()).Text(), "");
  EXPECT_EQ(ReadBytes(folder / "sets" / "copy.lscfg"), text);
  EXPECT_EQ(Rows(SlotKind::Motion), kMotion);
  EXPECT_FALSE(set.IsModified());
}

TEST_F(SoundSetMissingTest, ThoseThatAreLeftOutGoFromFileAndSetAsAStepToUndo) {
  Load();
  ASSERT_EQ(set.Save(folder / "sets" / "copy.lscfg", AnyDisk(), SoundSet::Missing::LeaveOut).Text(), "");
  EXPECT_EQ(
      ReadBytes(folder / "sets" / "copy.lscfg"),
      // The idle slot has the volume that no load has touched.
      Entry("BOOT", "boot.lsu", 90) + "PWRON\r\n\r\n 100\r\nPWROFF\r\n\r\n 100\r\nIDLE\r\n\r\n 100\r\nMOTION-3\r\n" +
          Entry("", "m1.lsu", 10) + Entry("", "m3.lsu", 30) + Entry("", "m5.lsu", 50) + "IMPACT-0\r\nLOCKUP-0\r\n");
  EXPECT_EQ(Rows(SlotKind::Motion), "m1.lsu@10 m3.lsu@30 m5.lsu@50");
  EXPECT_FALSE(set.IsModified());
  EXPECT_EQ(set.UndoText(), "Leave out 3 sounds");
  set.Undo();
  EXPECT_EQ(Rows(SlotKind::Motion), kMotion);
  EXPECT_EQ(Rows(SlotKind::Idle), "[idle.lsu@60]");
  EXPECT_TRUE(set.IsModified());
  ExpectConsistent();
}

TEST_F(SoundSetMissingTest, ASaveThatFailsLeavesNothingOut) {
  Load();
  EXPECT_NE(set.Save(folder / "nowhere" / "a.lscfg", AnyDisk(), SoundSet::Missing::LeaveOut).Text(), "");
  EXPECT_EQ(Rows(SlotKind::Motion), kMotion);
  EXPECT_EQ(set.UndoText(), "Load set.lscfg");
}

TEST_F(SoundSetMissingTest, LocatedSoundsTakeTheirPlacesWithTheirVolumesInOneStep) {
  Load();
  const fs::path m2 = Sound("other m2.lsu", 200);
  const fs::path idle = Sound("other idle.lsu", 300);
  const fs::path broken = WriteBytes(folder / "broken.lsu", "no sound");
  int turns = 0;
  const base::Result<int> found = set.Locate({{{SlotKind::Motion, 2}, {broken, m2}},
                                              {{SlotKind::Motion, 4}, {broken}},
                                              {{SlotKind::Idle, 1}, {idle}},
                                              {{SlotKind::Motion, 1}, {m2}}},
                                             [&] {
                                               ++turns;
                                               EXPECT_FALSE(set.Remove(SlotKind::Motion, 1));
                                             });
  ASSERT_TRUE(found);
  EXPECT_EQ(*found, 2);
  EXPECT_EQ(turns, 4);
  EXPECT_EQ(Rows(SlotKind::Motion), "m1.lsu@10 other m2.lsu@20 m3.lsu@30 [m4.lsu@40] m5.lsu@50");
  EXPECT_EQ(Rows(SlotKind::Idle), "other idle.lsu@60");
  EXPECT_EQ(configuration.TotalNrOfSamples(), 400 + 200 + 300);
  EXPECT_TRUE(set.IsModified());
  ExpectConsistent();
  EXPECT_EQ(set.UndoText(), "Locate 2 sounds");
  set.Undo();
  EXPECT_EQ(Rows(SlotKind::Motion), kMotion);
  EXPECT_EQ(Rows(SlotKind::Idle), "[idle.lsu@60]");
  EXPECT_FALSE(set.IsModified());
  set.Redo();
  EXPECT_EQ(Rows(SlotKind::Idle), "other idle.lsu@60");
  ExpectConsistent();
}

TEST_F(SoundSetMissingTest, WhatCannotBeLocatedIsNoStep) {
  Load();
  for (const LocatedSound& sound : {LocatedSound{{SlotKind::Motion, 2}, {folder / "none.lsu"}},
                                    LocatedSound{{SlotKind::Idle, 1}, {WriteBytes(folder / "broken.lsu", "no")}}}) {
    const base::Result<int> found = set.Locate({sound});
    ASSERT_FALSE(found);
    EXPECT_EQ(found.Why(), (base::Failure{base::FailureKind::NotValid, "Not a valid file"}));
  }
  EXPECT_EQ(set.UndoText(), "Load set.lscfg");
  EXPECT_EQ(Rows(SlotKind::Idle), "[idle.lsu@60]");
  EXPECT_FALSE(set.IsModified());
  ExpectConsistent();
}

TEST_F(SoundSetMissingTest, RowsMoveInsideTheirListWhetherTheSoundIsThereOrNot) {
  struct Case {
    int from;
    int to;
    const char* rows;
  };
  constexpr Case kCases[] = {
      {2, 5, "m1.lsu@10 m3.lsu@30 [m4.lsu@40] m5.lsu@50 [m2.lsu@20]"},
      {4, 1, "[m4.lsu@40] m1.lsu@10 [m2.lsu@20] m3.lsu@30 m5.lsu@50"},
      {1, 4, "[m2.lsu@20] m3.lsu@30 [m4.lsu@40] m1.lsu@10 m5.lsu@50"},
      {5, 2, "m1.lsu@10 m5.lsu@50 [m2.lsu@20] m3.lsu@30 [m4.lsu@40]"},
      {3, 2, "m1.lsu@10 m3.lsu@30 [m2.lsu@20] [m4.lsu@40] m5.lsu@50"},
  };
  Load();
  for (const Case& each : kCases) {
    set.Move(SlotKind::Motion, each.from, each.to);
    EXPECT_EQ(Rows(SlotKind::Motion), each.rows) << each.from << " to " << each.to;
    ExpectConsistent();
    set.Undo();
    EXPECT_EQ(Rows(SlotKind::Motion), kMotion);
  }
}

TEST_F(SoundSetMissingTest, RowsAreTakenOutWhetherTheSoundIsThereOrNot) {
  Load();
  set.Remove(SlotKind::Motion, 2);
  EXPECT_EQ(Rows(SlotKind::Motion), "m1.lsu@10 m3.lsu@30 [m4.lsu@40] m5.lsu@50");
  EXPECT_EQ(set.UndoText(), "Remove m2.lsu");
  // Volumes stay with the positions of the sounds that are there.
  set.Remove(SlotKind::Motion, 1);
  EXPECT_EQ(Rows(SlotKind::Motion), "m3.lsu@10 [m4.lsu@40] m5.lsu@30");
  set.Remove(SlotKind::Idle, 1);
  EXPECT_EQ(Rows(SlotKind::Idle), "");
  ExpectConsistent();
}

TEST_F(SoundSetMissingTest, TheRowsThatWaitCountTowardsTheTwelve) {
  Load();
  for (int sound = 0; sound < 7; ++sound) EXPECT_EQ(set.Add(SlotKind::Motion, folder / "m1.lsu").Text(), "");
  EXPECT_EQ(set.Count(SlotKind::Motion), 10);
  EXPECT_EQ(set.Add(SlotKind::Motion, folder / "m1.lsu").Text(), "Maximum number of Motion files reached");
  EXPECT_EQ(set.CopyTo({SlotKind::Boot, 1}, SlotKind::Motion, 1).Text(), "Maximum number of Motion files reached");
  // Else nobody could read the set again.
  ASSERT_EQ(set.Save(folder / "sets" / "full.lscfg", AnyDisk()).Text(), "");
  EXPECT_TRUE(set.Load(folder / "sets" / "full.lscfg").valid);
  set.Remove(SlotKind::Motion, 2);
  EXPECT_EQ(set.Add(SlotKind::Motion, folder / "m1.lsu").Text(), "");
}

TEST_F(SoundSetMissingTest, ASoundTakesTheSingleSlotOfAMissingOne) {
  Load();
  ASSERT_EQ(set.Add(SlotKind::Idle, folder / "m1.lsu").Text(), "");
  EXPECT_EQ(set.Rows(SlotKind::Idle), 1);
  EXPECT_TRUE(set.Holds({SlotKind::Idle, 1}));
  set.Undo();
  EXPECT_EQ(Rows(SlotKind::Idle), "[idle.lsu@60]");
  ASSERT_EQ(set.MoveTo({SlotKind::Motion, 3}, SlotKind::Idle, 1).Text(), "");
  EXPECT_EQ(Rows(SlotKind::Idle), "m3.lsu@30");
  EXPECT_EQ(Rows(SlotKind::Motion), "m1.lsu@10 [m2.lsu@20] [m4.lsu@40] m5.lsu@50");
  ExpectConsistent();
}

TEST_F(SoundSetMissingTest, SoundsOfOtherSlotsComeBetweenTheRows) {
  Load();
  ASSERT_EQ(set.CopyTo({SlotKind::Boot, 1}, SlotKind::Motion, 3).Text(), "");
  EXPECT_EQ(Rows(SlotKind::Motion), "m1.lsu@10 [m2.lsu@20] boot.lsu@90 m3.lsu@30 [m4.lsu@40] m5.lsu@50");
  ASSERT_EQ(set.MoveTo({SlotKind::Boot, 1}, SlotKind::Motion, 12).Text(), "");
  EXPECT_EQ(Rows(SlotKind::Motion), "m1.lsu@10 [m2.lsu@20] boot.lsu@90 m3.lsu@30 [m4.lsu@40] m5.lsu@50 boot.lsu@90");
  ExpectConsistent();
}

TEST_F(SoundSetMissingTest, AMissingSoundStaysInItsSlot) {
  Load();
  EXPECT_EQ(set.MoveTo({SlotKind::Motion, 2}, SlotKind::Impact, 1).Text(), "Not a valid file");
  EXPECT_EQ(set.CopyTo({SlotKind::Idle, 1}, SlotKind::Boot, 1).Text(), "Not a valid file");
  EXPECT_EQ(Rows(SlotKind::Motion), kMotion);
  EXPECT_EQ(Rows(SlotKind::Boot), "boot.lsu@90");
}

TEST_F(SoundSetMissingTest, VolumesAreSetForTheSoundsThatAreThere) {
  Load();
  set.SetVolume({{SlotKind::Motion, 2}, {SlotKind::Motion, 3}}, 77);
  EXPECT_EQ(Rows(SlotKind::Motion), "m1.lsu@10 [m2.lsu@20] m3.lsu@77 [m4.lsu@40] m5.lsu@50");
  EXPECT_EQ(set.UndoText(), "Change volume of m3.lsu");
  set.Undo();
  set.SetVolume(SlotKind::Motion, 2, 5);
  EXPECT_EQ(set.UndoText(), "Load set.lscfg");
}

TEST_F(SoundSetMissingTest, ANewSetAndAnotherSetHaveNone) {
  Load();
  set.Clear();
  EXPECT_TRUE(set.AllMissing().IsEmpty());
  set.Undo();
  EXPECT_EQ(Rows(SlotKind::Motion), kMotion);
  ASSERT_TRUE(set.Load(WriteBytes(folder / "sets" / "empty.lscfg",
                                  "BOOT\r\n\r\n0\r\nPWRON\r\n\r\n0\r\nPWROFF\r\n\r\n0\r\nIDLE\r\n\r\n0\r\n"
                                  "MOTION-0\r\nIMPACT-0\r\nLOCKUP-0\r\n"))
                  .valid);
  EXPECT_TRUE(set.AllMissing().IsEmpty());
  // An empty set that has no name yet is no set of missing sounds either.
  EXPECT_EQ(set.Rows(SlotKind::Motion), 0);
}

TEST_F(SoundSetMissingTest, ABrokenFileLeavesTheMissingSoundsOfTheSlotsThatItDidNotReach) {
  Load();
  const std::string broken = "BOOT\r\n" + (folder / "gone.lsu").string() + "\r\n 33\r\nWRONG\r\n";
  EXPECT_FALSE(set.Load(WriteBytes(folder / "sets" / "b.lscfg", broken)).valid);
  EXPECT_EQ(Rows(SlotKind::Boot), "[gone.lsu@33]");
  EXPECT_EQ(Rows(SlotKind::Motion), kMotion);
  EXPECT_TRUE(set.IsModified());
  ExpectConsistent();
}

}  // namespace
}  // namespace kestrin::core::sound
