// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "core/sound/SoundSet.h"
#include "support/RecordingDisk.h"
#include "support/SoundSetFixture.h"

namespace kestrin::core::sound {
namespace {

using support::SoundSetFixture;

class SoundSetUndoTest : public SoundSetFixture {
 protected:
  /// Everything about the set that counts: names, volumes, peaks and lengths of all places, empty ones too.
  std::string Everything() {
    std::string text = set.Name() + (set.IsModified() ? "*" : "");
    for (const Slot& slot : kSlots) {
      text += " " + std::to_string(set.Count(slot.kind)) + ":";
      for (int position = 1; position <= (slot.isList ? set.Count(slot.kind) : 1); ++position) {
        const LSU_SoundFile& file = configuration.FileAt(slot.kind, position);
        text += file.FileNameAndPath().filename().string() + "," + std::to_string(file.NrOfSamples()) + "," +
                std::to_string(file.Peak()) + "," + std::to_string(file.Volume()) + ";";
      }
    }
    return text + std::to_string(configuration.TotalNrOfSamples());
  }
};

struct UndoStep {
  std::string text;
  std::function<void()> make;
};

TEST_F(SoundSetUndoTest, EveryChangeIsTakenBackAndDoneAgainExactly) {
  Fill(SlotKind::Motion, 3);
  Fill(SlotKind::Boot, 1);
  ASSERT_EQ(set.Save(folder / "other.lscfg", support::AnyDisk()).Text(), "");
  set.Clear();
  Fill(SlotKind::Impact, 2);
  set.SetVolume(SlotKind::Impact, 1, 80);
  ASSERT_EQ(set.Save(folder / "set.lscfg", support::AnyDisk()).Text(), "");
  const std::vector<UndoStep> changes{
      {"Add x.lsu", [&] { ASSERT_EQ(set.Add(SlotKind::Impact, Sound("x.lsu", 300, 9000)).Text(), ""); }},
      {"Add x.lsu", [&] { ASSERT_EQ(set.Add(SlotKind::Idle, folder / "x.lsu").Text(), ""); }},
      {"Remove impact 1.lsu", [&] { set.Remove(SlotKind::Impact, 1); }},
      {"Remove x.lsu", [&] { set.Remove(SlotKind::Idle, 1); }},
      {"Move impact 2.lsu", [&] { set.Move(SlotKind::Impact, 1, 2); }},
      {"Move x.lsu",
       [&] {
         ASSERT_EQ(set.MoveTo({SlotKind::Impact, 1}, SlotKind::Lockup, 1).Text(), "");
       }},
      {"Copy x.lsu",
       [&] {
         ASSERT_EQ(set.CopyTo({SlotKind::Lockup, 1}, SlotKind::Boot, 1).Text(), "");
       }},
      {"Change volume of x.lsu", [&] { set.SetVolume(SlotKind::Boot, 1, 12); }},
      {"Load other.lscfg", [&] { ASSERT_TRUE(set.Load(folder / "other.lscfg").valid); }},
      {"New set", [&] { set.Clear(); }},
  };
  std::vector<std::string> states{Everything()};
  for (const UndoStep& change : changes) {
    change.make();
    EXPECT_EQ(set.UndoText(), change.text);
    EXPECT_NE(Everything(), states.back()) << change.text;
    states.push_back(Everything());
  }
  // There and back twice: taking back must not wear anything away.
  for (int round = 0; round < 2; ++round) {
    for (std::size_t step = changes.size(); step > 0; --step) {
      EXPECT_EQ(set.UndoText(), changes[step - 1].text);
      set.Undo();
      EXPECT_EQ(Everything(), states[step - 1]) << changes[step - 1].text;
    }
    for (std::size_t step = 0; step < changes.size(); ++step) {
      EXPECT_EQ(set.RedoText(), changes[step].text);
      set.Redo();
      EXPECT_EQ(Everything(), states[step + 1]) << changes[step].text;
    }
    EXPECT_FALSE(set.CanRedo());
  }
}

TEST_F(SoundSetUndoTest, WithNothingToUndoNothingHappens) {
  EXPECT_FALSE(set.CanUndo());
  EXPECT_FALSE(set.CanRedo());
  EXPECT_EQ(set.UndoText(), "");
  EXPECT_EQ(set.RedoText(), "");
  set.Undo();
  set.Redo();
  EXPECT_EQ(Everything(), "New set 0:,0,0,100; 0:,0,0,100; 0:,0,0,100; 0:,0,0,100; 0: 0: 0:0");
}

TEST_F(SoundSetUndoTest, TheVolumeOfOneSoundIsOneStep) {
  Fill(SlotKind::Motion, 2);
  for (std::int16_t percent = 99; percent >= 40; --percent) set.SetVolume(SlotKind::Motion, 1, percent);
  set.SetVolume(SlotKind::Motion, 2, 10);
  set.SetVolume(SlotKind::Motion, 1, 30);
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@30 motion 2.lsu@10");
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@40 motion 2.lsu@10");
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@40 motion 2.lsu@100");
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@100 motion 2.lsu@100");
}

TEST_F(SoundSetUndoTest, ASaveSplitsAVolumeStep) {
  Fill(SlotKind::Boot, 1);
  set.SetVolume(SlotKind::Boot, 1, 80);
  ASSERT_EQ(set.Save(folder / "a.lscfg", support::AnyDisk()).Text(), "");
  set.SetVolume(SlotKind::Boot, 1, 60);
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Boot), "boot 1.lsu@80");
  EXPECT_FALSE(set.IsModified());
}

TEST_F(SoundSetUndoTest, AVolumeSetAfterAnUndoIsAStepOfItsOwn) {
  Fill(SlotKind::Boot, 1);
  set.SetVolume(SlotKind::Boot, 1, 80);
  set.Undo();
  set.SetVolume(SlotKind::Boot, 1, 60);
  EXPECT_FALSE(set.CanRedo());
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Boot), "boot 1.lsu@100");
}

TEST_F(SoundSetUndoTest, ANewChangeForgetsWhatCouldBeRedone) {
  Fill(SlotKind::Motion, 2);
  set.Undo();
  EXPECT_TRUE(set.CanRedo());
  ASSERT_EQ(set.Add(SlotKind::Motion, Sound("x.lsu", 100)).Text(), "");
  EXPECT_FALSE(set.CanRedo());
}

TEST_F(SoundSetUndoTest, AGroupIsOneStep) {
  Fill(SlotKind::Motion, 1);
  {
    const SoundSet::Group group(set);
    Fill(SlotKind::Impact, 3);
    set.Remove(SlotKind::Motion, 1);
  }
  Fill(SlotKind::Boot, 1);
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Impact), "impact 1.lsu@100 impact 2.lsu@100 impact 3.lsu@100");
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Impact), "");
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@100");
  set.Redo();
  EXPECT_EQ(Names(SlotKind::Impact), "impact 1.lsu@100 impact 2.lsu@100 impact 3.lsu@100");
  EXPECT_EQ(Names(SlotKind::Motion), "");
}

TEST_F(SoundSetUndoTest, AnEmptyGroupIsNoStep) {
  { const SoundSet::Group group(set); }
  EXPECT_FALSE(set.CanUndo());
}

TEST_F(SoundSetUndoTest, TheMarkFollowsTheFileThatIsUndoneTo) {
  Fill(SlotKind::Boot, 1);
  ASSERT_EQ(set.Save(folder / "a.lscfg", support::AnyDisk()).Text(), "");
  Fill(SlotKind::Idle, 1);
  ASSERT_EQ(set.Save(folder / "b.lscfg", support::AnyDisk()).Text(), "");
  // The set was saved under another name since: that is the file it would be saved to now.
  set.Undo();
  EXPECT_EQ(set.Name(), "b");
  EXPECT_TRUE(set.IsModified());
  set.Redo();
  EXPECT_FALSE(set.IsModified());
  ASSERT_TRUE(set.Load(folder / "a.lscfg").valid);
  EXPECT_EQ(set.Name(), "a");
  set.Undo();
  EXPECT_EQ(set.Name(), "b");
  EXPECT_FALSE(set.IsModified());
}

TEST_F(SoundSetUndoTest, AHundredStepsAreRemembered) {
  Fill(SlotKind::Motion, 2);
  for (int change = 0; change < 150; ++change) set.Move(SlotKind::Motion, 1, 2);
  int undone = 0;
  for (; set.CanUndo(); ++undone) set.Undo();
  EXPECT_EQ(undone, 100);
}

TEST_F(SoundSetUndoTest, StreamsAreNotRemembered) {
  Fill(SlotKind::Boot, 1);
  ASSERT_TRUE(configuration.FileAt(SlotKind::Boot).Code());
  std::vector<std::uint8_t> bytes;
  ASSERT_TRUE(configuration.FileAt(SlotKind::Boot).GetBytes(bytes, 0, 1));
  set.SetVolume(SlotKind::Boot, 1, 50);
  set.Undo();
  EXPECT_FALSE(configuration.FileAt(SlotKind::Boot).GetBytes(bytes, 0, 1));
}

}  // namespace
}  // namespace kestrin::core::sound
