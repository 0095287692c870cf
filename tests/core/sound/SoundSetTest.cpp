// SPDX-License-Identifier: MIT
#include "core/sound/SoundSet.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/RecordingDisk.h"
#include "support/SoundSetFixture.h"

namespace kestrin::core::sound {
namespace {

using support::SoundSetFixture;
using support::TemporaryFolder;
using support::WriteBytes;

class SoundSetTest : public SoundSetFixture {};

/// Why something failed; an empty text when it did not.
template <class T>
base::Failure Refusal(const base::Result<T>& result) {
  return result ? base::Failure() : result.Why();
}

TEST_F(SoundSetTest, ASoundGoesIntoItsSingleSlot) {
  EXPECT_EQ(set.Add(SlotKind::Boot, Sound("a.lsu", 480)).Text(), "");
  EXPECT_EQ(Names(SlotKind::Boot), "a.lsu@100");
  EXPECT_EQ(configuration.TotalNrOfSamples(), 480);
}

TEST_F(SoundSetTest, ASecondSoundReplacesTheFirstOfASingleSlot) {
  ASSERT_EQ(set.Add(SlotKind::Idle, Sound("a.lsu", 480)).Text(), "");
  ASSERT_EQ(set.Add(SlotKind::Idle, Sound("b.lsu", 200)).Text(), "");
  EXPECT_EQ(Names(SlotKind::Idle), "b.lsu@100");
  EXPECT_EQ(configuration.TotalNrOfSamples(), 200);
}

TEST_F(SoundSetTest, ARefusedFileLeavesTheSoundOfASingleSlot) {
  ASSERT_EQ(set.Add(SlotKind::PwrOn, Sound("a.lsu", 480)).Text(), "");
  set.SetVolume(SlotKind::PwrOn, 1, 70);
  EXPECT_EQ(set.Add(SlotKind::PwrOn, WriteBytes(folder / "b.lsu", "no sound")).Text(), "Not a valid file");
  EXPECT_EQ(Names(SlotKind::PwrOn), "a.lsu@70");
  EXPECT_EQ(configuration.TotalNrOfSamples(), 480);
  EXPECT_EQ(set.UndoText(), "Change volume of a.lsu");
}

TEST_F(SoundSetTest, ARefusedFileLeavesAListAsItWas) {
  Fill(SlotKind::Motion, 2);
  EXPECT_EQ(Refusal(set.Add(SlotKind::Motion, folder / "missing.lsu")),
            (base::Failure{base::FailureKind::NotValid, "Not a valid file"}));
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@100 motion 2.lsu@100");
}

TEST_F(SoundSetTest, AFullListTakesNothingAndSaysSo) {
  const std::vector<std::pair<SlotKind, std::string>> lists{
      {SlotKind::Motion, "Maximum number of Motion files reached"},
      {SlotKind::Impact, "Maximum number of Impact files reached"},
      {SlotKind::Lockup, "Maximum number of Lock-up files reached"},
  };
  for (const auto& [kind, message] : lists) {
    Fill(kind, 12);
    const std::string before = Names(kind);
    // Not even whether it is a sound is looked at.
    EXPECT_EQ(Refusal(set.Add(kind, folder / "missing.lsu")), (base::Failure{base::FailureKind::Full, message}));
    EXPECT_EQ(Refusal(set.CopyTo({kind, 1}, kind, 1)), (base::Failure{base::FailureKind::Full, message}));
    EXPECT_EQ(Names(kind), before);
  }
}

TEST_F(SoundSetTest, RemovingFromAListLeavesVolumesWithTheirPositions) {
  Fill(SlotKind::Motion, 3);
  set.SetVolume(SlotKind::Motion, 2, 50);
  set.SetVolume(SlotKind::Motion, 3, 30);
  set.Remove(SlotKind::Motion, 2);
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@100 motion 3.lsu@50");
}

TEST_F(SoundSetTest, RemovingWhatIsNotThereDoesNothing) {
  Fill(SlotKind::Motion, 1);
  EXPECT_TRUE(set.Remove(SlotKind::Motion, 2));
  EXPECT_TRUE(set.Remove(SlotKind::Boot, 1));
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@100");
  EXPECT_EQ(set.UndoText(), "Add motion 1.lsu");
}

struct MoveCase {
  int from;
  int to;
  std::string order;
};

TEST_F(SoundSetTest, MovingInsideAListTakesTheVolumeAlong) {
  const std::vector<MoveCase> cases{
      {1, 3, "motion 2.lsu@20 motion 3.lsu@30 motion 1.lsu@10"},
      {3, 1, "motion 3.lsu@30 motion 1.lsu@10 motion 2.lsu@20"},
      {2, 3, "motion 1.lsu@10 motion 3.lsu@30 motion 2.lsu@20"},
      {2, 2, "motion 1.lsu@10 motion 2.lsu@20 motion 3.lsu@30"},
      {4, 1, "motion 1.lsu@10 motion 2.lsu@20 motion 3.lsu@30"},
      {1, 4, "motion 1.lsu@10 motion 2.lsu@20 motion 3.lsu@30"},
  };
  for (const MoveCase& each : cases) {
    set.Clear();
    Fill(SlotKind::Motion, 3);
    for (int position = 1; position <= 3; ++position)
      set.SetVolume(SlotKind::Motion, position, static_cast<std::int16_t>(10 * position));
    set.Move(SlotKind::Motion, each.from, each.to);
    EXPECT_EQ(Names(SlotKind::Motion), each.order) << each.from << " to " << each.to;
  }
}

TEST_F(SoundSetTest, MovingToAnotherListKeepsAllVolumes) {
  Fill(SlotKind::Motion, 3);
  Fill(SlotKind::Impact, 2);
  set.SetVolume(SlotKind::Motion, 1, 40);
  set.SetVolume(SlotKind::Motion, 2, 60);
  EXPECT_EQ(set.MoveTo({SlotKind::Motion, 1}, SlotKind::Impact, 2).Text(), "");
  EXPECT_EQ(Names(SlotKind::Motion), "motion 2.lsu@60 motion 3.lsu@100");
  EXPECT_EQ(Names(SlotKind::Impact), "impact 1.lsu@100 motion 1.lsu@40 impact 2.lsu@100");
}

TEST_F(SoundSetTest, CopyingLeavesTheSoundWhereItIs) {
  Fill(SlotKind::Boot, 1);
  set.SetVolume(SlotKind::Boot, 1, 40);
  EXPECT_EQ(set.CopyTo({SlotKind::Boot, 1}, SlotKind::Lockup, 12).Text(), "");
  EXPECT_EQ(set.CopyTo({SlotKind::Boot, 1}, SlotKind::Idle, 1).Text(), "");
  EXPECT_EQ(Names(SlotKind::Boot), "boot 1.lsu@40");
  EXPECT_EQ(Names(SlotKind::Lockup), "boot 1.lsu@40");
  EXPECT_EQ(Names(SlotKind::Idle), "boot 1.lsu@40");
}

TEST_F(SoundSetTest, MovingASoundWhoseFileIsGoneChangesNothing) {
  Fill(SlotKind::Motion, 1);
  Fill(SlotKind::Boot, 1);
  std::filesystem::remove(folder / "motion 1.lsu");
  EXPECT_EQ(set.MoveTo({SlotKind::Motion, 1}, SlotKind::Boot, 1).Text(), "Not a valid file");
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@100");
  EXPECT_EQ(Names(SlotKind::Boot), "boot 1.lsu@100");
}

TEST_F(SoundSetTest, TheVolumeOfSeveralSoundsIsSetAtOnce) {
  Fill(SlotKind::Motion, 3);
  set.SetVolume(SlotKind::Motion, 3, 50);
  const std::vector<SoundPlace> two{{SlotKind::Motion, 1}, {SlotKind::Motion, 3}};
  set.SetVolume(two, 50);
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@50 motion 2.lsu@100 motion 3.lsu@50");
  EXPECT_EQ(set.UndoText(), "Change volume of 2 sounds");
  set.SetVolume(two, 40);
  set.SetVolume(two, 30);
  set.SetVolume(two, 30);
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@30 motion 2.lsu@100 motion 3.lsu@30");
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@100 motion 2.lsu@100 motion 3.lsu@50");
  EXPECT_EQ(set.UndoText(), "Change volume of motion 3.lsu");
}

TEST_F(SoundSetTest, BareOfAFileTheSetIsCalledNewSet) {
  EXPECT_EQ(set.Name(), "New set");
  EXPECT_FALSE(set.IsModified());
}

TEST_F(SoundSetTest, SavingGivesTheSetItsNameAndTakesTheMarkAway) {
  Fill(SlotKind::Boot, 1);
  EXPECT_TRUE(set.IsModified());
  ASSERT_EQ(set.Save(folder / "ember knight.lscfg", support::AnyDisk()).Text(), "");
  EXPECT_EQ(set.Name(), "ember knight");
  EXPECT_FALSE(set.IsModified());
  set.SetVolume(SlotKind::Boot, 1, 99);
  EXPECT_TRUE(set.IsModified());
  set.SetVolume(SlotKind::Boot, 1, 100);
  EXPECT_FALSE(set.IsModified());
}

TEST_F(SoundSetTest, ASaveThatFailsKeepsTheMark) {
  Fill(SlotKind::Boot, 1);
  EXPECT_NE(set.Save(folder / "no such folder" / "a.lscfg", support::AnyDisk()).Text(), "");
  EXPECT_TRUE(set.IsModified());
  EXPECT_EQ(set.Name(), "New set");
}

TEST_F(SoundSetTest, LoadingBringsTheSavedSetAndItsName) {
  Fill(SlotKind::Boot, 1);
  Fill(SlotKind::Lockup, 2);
  set.SetVolume(SlotKind::Lockup, 2, 35);
  ASSERT_EQ(set.Save(folder / "a.lscfg", support::AnyDisk()).Text(), "");
  set.Clear();
  EXPECT_EQ(Names(SlotKind::Lockup), "");
  EXPECT_EQ(set.Name(), "New set");
  const LoadResult result = set.Load(folder / "a.lscfg");
  EXPECT_EQ(result.Message(), "");
  EXPECT_EQ(Names(SlotKind::Lockup), "lockup 1.lsu@100 lockup 2.lsu@35");
  EXPECT_EQ(set.Name(), "a");
  EXPECT_FALSE(set.IsModified());
}

TEST_F(SoundSetTest, AFileThatIsNoConfigurationChangesNeitherSetNorName) {
  Fill(SlotKind::Boot, 1);
  ASSERT_EQ(set.Save(folder / "a.lscfg", support::AnyDisk()).Text(), "");
  const std::string before = set.UndoText();
  EXPECT_EQ(set.Load(WriteBytes(folder / "b.lscfg", "IDLE\r\n")).Message(), "Not a valid configuration file");
  EXPECT_EQ(set.Name(), "a");
  EXPECT_FALSE(set.IsModified());
  EXPECT_EQ(set.UndoText(), before);
}

TEST_F(SoundSetTest, ABrokenConfigurationLeavesWhatItHeldAsAChangeToUndo) {
  Fill(SlotKind::Boot, 1);
  ASSERT_EQ(set.Save(folder / "a.lscfg", support::AnyDisk()).Text(), "");
  Sound("other.lsu", 100);
  const std::string text = "BOOT\r\n" + (folder / "other.lsu").string() + "\r\n 100\r\nWRONG\r\n";
  EXPECT_FALSE(set.Load(WriteBytes(folder / "b.lscfg", text)).valid);
  EXPECT_EQ(Names(SlotKind::Boot), "other.lsu@100");
  EXPECT_EQ(set.Name(), "a");
  EXPECT_TRUE(set.IsModified());
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Boot), "boot 1.lsu@100");
  EXPECT_FALSE(set.IsModified());
}

TEST_F(SoundSetTest, NothingElseChangesTheSetWhileItIsLoaded) {
  Fill(SlotKind::Motion, 2);
  ASSERT_EQ(set.Save(folder / "a.lscfg", support::AnyDisk()).Text(), "");
  const base::Failure busy{base::FailureKind::Busy, "Please wait until the sounds are loaded"};
  int turns = 0;
  const LoadResult result = set.Load(folder / "a.lscfg", [&] {
    ++turns;
    EXPECT_TRUE(set.IsLoading());
    EXPECT_EQ(Refusal(set.MoveTo({SlotKind::Motion, 1}, SlotKind::Motion, 2)), busy);
    EXPECT_EQ(Refusal(set.Locate({})), busy);
    EXPECT_EQ(Refusal(set.Add(SlotKind::Boot, folder / "motion 1.lsu")), busy);
    EXPECT_FALSE(set.Remove(SlotKind::Motion, 1));
    EXPECT_FALSE(set.Move(SlotKind::Motion, 1, 2));
    EXPECT_EQ(Refusal(set.CopyTo({SlotKind::Motion, 1}, SlotKind::Boot, 1)), busy);
    EXPECT_FALSE(set.SetVolume(SlotKind::Motion, 1, 5));
    EXPECT_FALSE(set.Clear());
    EXPECT_EQ(Refusal(set.Save(folder / "b.lscfg", support::AnyDisk())), busy);
    EXPECT_EQ(Refusal(set.Load(folder / "a.lscfg").valid), busy);
    EXPECT_FALSE(set.CanUndo());
    set.Undo();
  });
  EXPECT_TRUE(result.valid);
  // Four single slots, two motion files, and the end.
  EXPECT_EQ(turns, 7);
  EXPECT_FALSE(set.IsLoading());
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@100 motion 2.lsu@100");
  EXPECT_EQ(Names(SlotKind::Boot), "");
}

TEST_F(SoundSetTest, ASetFitsUpToTheLastSample) {
  ASSERT_EQ(set.Add(SlotKind::Boot, Sound("a.lsu", 480)).Text(), "");
  set.SetCapacity(480);
  EXPECT_TRUE(set.Fits());
  set.SetCapacity(479);
  EXPECT_FALSE(set.Fits());
  set.Undo();
  EXPECT_TRUE(set.Fits());
  EXPECT_EQ(configuration.MaxNrOfSamples(), 479);
}

TEST_F(SoundSetTest, AnEmptyPlaceHasNoSound) {
  EXPECT_FALSE(set.Holds({SlotKind::Boot, 1}));
  EXPECT_THROW((void)set.At({SlotKind::Boot, 1}), std::out_of_range);
  Fill(SlotKind::Motion, 2);
  EXPECT_TRUE(set.Holds({SlotKind::Motion, 2}));
  EXPECT_FALSE(set.Holds({SlotKind::Motion, 3}));
  EXPECT_FALSE(set.Holds({SlotKind::Motion, 0}));
}

class CountingListener : public SoundSetListener {
 public:
  void SlotChanged(SlotKind kind) override { slots.push_back(kind); }
  void MemoryChanged() override { ++memory; }
  void ModifiedChanged() override { ++modified; }

  std::vector<SlotKind> slots;
  int memory = 0;
  int modified = 0;
};

TEST_F(SoundSetTest, ListenersHearWhichSlotChanged) {
  CountingListener listener;
  set.AddListener(listener);
  Fill(SlotKind::Motion, 1);
  EXPECT_EQ(listener.slots, std::vector{SlotKind::Motion});
  EXPECT_EQ(listener.memory, 1);
  EXPECT_EQ(listener.modified, 1);
  ASSERT_EQ(set.MoveTo({SlotKind::Motion, 1}, SlotKind::Idle, 1).Text(), "");
  EXPECT_EQ(listener.slots, (std::vector{SlotKind::Motion, SlotKind::Motion, SlotKind::Idle}));
  listener.slots.clear();
  set.Undo();
  EXPECT_EQ(listener.slots.size(), kSlots.size());
  set.RemoveListener(listener);
  set.Redo();
  EXPECT_EQ(listener.slots.size(), kSlots.size());
}

}  // namespace
}  // namespace kestrin::core::sound
