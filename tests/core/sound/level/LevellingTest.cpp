// SPDX-License-Identifier: MIT
#include "core/sound/level/Levelling.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "core/sound/SoundSet.h"
#include "core/sound/level/BoardSound.h"
#include "support/EnergyMeter.h"
#include "support/RecordingDisk.h"
#include "support/SoundSetFixture.h"

namespace kestrin::core::sound {
namespace {

using support::EnergyMeter;
using Samples = std::vector<std::int16_t>;

Balance EvenBalance() {
  Balance balance;
  for (const Slot& slot : kSlots) balance.Set(slot.kind, 0);
  return balance;
}

class LevellingTest : public support::SoundSetFixture {
 protected:
  /// One sample in `every` is 20000, the others are 0: what is coded has 10 * log10(every) less energy than full
  /// height.
  std::filesystem::path Sparse(const std::string& name, std::size_t every, std::size_t count = 4000) {
    Samples samples(count, 0);
    for (std::size_t i = every; i + 1 < count; i += every) samples[i] = 20000;
    return support::WriteSoundFile(folder / name, samples);
  }

  std::vector<MeasuredSound> Measured() {
    const auto measured = Levelling::Measure(Levelling::SoundsOf(set), EnergyMeter::Make, {});
    EXPECT_TRUE(measured) << measured.Text();
    return *measured;
  }

  base::Result<> Level(const Balance& balance) { return Levelling::Apply(LevelPlan::Of(Measured(), balance), set); }

  /// How loud the board plays the sound at its volume, by the meter alone.
  static double Played(const LSU_SoundFile& sound) {
    BoardSound board(sound);
    double energy = 0;
    double count = 0;
    for (auto block = board.Next(); !block.empty(); block = board.Next())
      for (const std::int16_t sample : block) {
        energy += (sample / 32767.0) * (sample / 32767.0);
        ++count;
      }
    return 10 * std::log10(energy / count);
  }
};

TEST_F(LevellingTest, MeasuresEverySoundAsTheBoardPlaysItAtFullVolume) {
  ASSERT_TRUE(set.Add(SlotKind::Boot, Sparse("boot.lsu", 1)));
  ASSERT_TRUE(set.Add(SlotKind::Motion, Sparse("sparse.lsu", 100)));
  set.SetVolume(SlotKind::Motion, 1, 300);
  const std::vector<MeasuredSound> measured = Measured();
  ASSERT_EQ(measured.size(), 2U);
  EXPECT_EQ(measured[0].path, folder / "boot.lsu");
  EXPECT_EQ(measured[0].place, (SoundPlace{SlotKind::Boot, 1}));
  EXPECT_EQ(measured[1].volume, 300);
  // At full height everywhere but at the ends: 999 of 1,023, that is -0.206 dB. 39 of 4,000: 20.110 dB less.
  EXPECT_NEAR(measured[0].lufs.value(), -0.206, 0.03);
  EXPECT_NEAR(measured[1].lufs.value(), -20.316, 0.03);
}

TEST_F(LevellingTest, ChangesTheVolumesInOneStepThatIsTakenBackAsOne) {
  ASSERT_TRUE(set.Add(SlotKind::Boot, Sparse("boot.lsu", 1)));
  ASSERT_TRUE(set.Add(SlotKind::Idle, Sparse("hum.lsu", 4)));
  ASSERT_TRUE(set.Add(SlotKind::Motion, Sparse("swing.lsu", 100)));
  set.SetVolume(SlotKind::Motion, 1, 150);
  set.SetVolume(SlotKind::Boot, 1, 90);
  const std::string before = set.UndoText();
  ASSERT_TRUE(Level(EvenBalance()));
  // One in a hundred is a tenth, one in four a half of the height that has the same energy; 20 and 14 LU come down.
  EXPECT_EQ(Names(SlotKind::Boot), "boot.lsu@10");
  EXPECT_EQ(Names(SlotKind::Idle), "hum.lsu@20");
  EXPECT_EQ(Names(SlotKind::Motion), "swing.lsu@100");
  EXPECT_EQ(set.UndoText(), "Level the volumes");
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Boot), "boot.lsu@90");
  EXPECT_EQ(Names(SlotKind::Idle), "hum.lsu@100");
  EXPECT_EQ(Names(SlotKind::Motion), "swing.lsu@150");
  EXPECT_EQ(set.UndoText(), before);
  set.Redo();
  EXPECT_EQ(Names(SlotKind::Boot), "boot.lsu@10");
}

TEST_F(LevellingTest, JoinsNoVolumeChangeBeforeOrBehindIt) {
  ASSERT_TRUE(set.Add(SlotKind::Boot, Sparse("boot.lsu", 1)));
  ASSERT_TRUE(set.Add(SlotKind::PwrOn, Sparse("on.lsu", 100)));
  set.SetVolume(SlotKind::Boot, 1, 90);
  ASSERT_TRUE(Level(EvenBalance()));
  set.SetVolume(SlotKind::Boot, 1, 33);
  EXPECT_EQ(set.UndoText(), "Change volume of boot.lsu");
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Boot), "boot.lsu@10");
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Boot), "boot.lsu@90");
}

TEST_F(LevellingTest, IsNoStepWhenEverythingIsLevelAlready) {
  ASSERT_TRUE(set.Add(SlotKind::Boot, Sparse("boot.lsu", 3)));
  ASSERT_TRUE(Level(EvenBalance()));
  EXPECT_EQ(set.UndoText(), "Add boot.lsu");
}

TEST_F(LevellingTest, LeavesSoundsThatAreMissingInTheirRows) {
  ASSERT_TRUE(set.Add(SlotKind::Motion, Sparse("a.lsu", 1)));
  ASSERT_TRUE(set.Add(SlotKind::Motion, Sparse("b.lsu", 1)));
  ASSERT_TRUE(set.Add(SlotKind::Motion, Sparse("c.lsu", 100)));
  set.SetVolume(SlotKind::Motion, 2, 60);
  ASSERT_TRUE(set.Save(folder / "set.lscfg", support::AnyDisk()));
  std::filesystem::remove(folder / "b.lsu");
  ASSERT_EQ(set.Load(folder / "set.lscfg").failed.size(), 1U);
  ASSERT_TRUE(Level(EvenBalance()));
  EXPECT_EQ(set.At({SlotKind::Motion, 1}).Volume(), 10);
  EXPECT_EQ(set.AllMissing().At({SlotKind::Motion, 2})->volume, 60);
  EXPECT_EQ(set.At({SlotKind::Motion, 3}).Volume(), 100);
}

TEST_F(LevellingTest, SaysWhatCannotBeMeasured) {
  ASSERT_TRUE(set.Add(SlotKind::Boot, Sparse("boot.lsu", 1)));
  // One sample in 200,000 is at -53 by the meter.
  Samples click(200000, 0);
  click[1000] = 1;
  ASSERT_TRUE(set.Add(SlotKind::PwrOn, support::WriteSoundFile(folder / "click.lsu", click)));
  ASSERT_TRUE(set.Add(SlotKind::PwrOff, Sparse("gone.lsu", 1)));
  set.SetVolume(SlotKind::PwrOff, 1, 70);
  std::filesystem::remove(folder / "gone.lsu");
  ASSERT_TRUE(set.Add(SlotKind::Idle, Sparse("cut.lsu", 1, 40000)));
  Sparse("cut.lsu", 1, 20000);
  const std::vector<MeasuredSound> measured = Measured();
  ASSERT_EQ(measured.size(), 4U);
  EXPECT_TRUE(measured[0].lufs);
  EXPECT_FALSE(measured[1].lufs);
  EXPECT_EQ(measured[1].reason, "");
  EXPECT_FALSE(measured[2].lufs);
  EXPECT_NE(measured[2].reason.find("is no longer there"), std::string::npos) << measured[2].reason;
  EXPECT_FALSE(measured[3].lufs);
  EXPECT_NE(measured[3].reason.find("has changed since"), std::string::npos) << measured[3].reason;
  ASSERT_TRUE(Levelling::Apply(LevelPlan::Of(measured, EvenBalance()), set));
  EXPECT_EQ(set.At({SlotKind::PwrOff, 1}).Volume(), 70);
}

TEST_F(LevellingTest, ASoundThatMovedUpCountsAsLoudAsItsPlaceMakesIt) {
  ASSERT_TRUE(set.Add(SlotKind::Motion, support::WriteSoundFile(folder / "loud.lsu", Samples(200, 20000))));
  ASSERT_TRUE(set.Add(SlotKind::Motion, support::WriteSoundFile(folder / "quiet.lsu", Samples(200, 10000))));
  ASSERT_TRUE(set.Add(SlotKind::Boot, support::WriteSoundFile(folder / "boot.lsu", Samples(200, 5000))));
  // The peak of the first place stays there: the second sound comes out at half the height.
  set.Remove(SlotKind::Motion, 1);
  ASSERT_TRUE(Level(EvenBalance()));
  EXPECT_EQ(Names(SlotKind::Motion), "quiet.lsu@100");
  EXPECT_EQ(Names(SlotKind::Boot), "boot.lsu@50");
}

TEST_F(LevellingTest, TellsHowFarItIsAndStopsWhenItIsTold) {
  ASSERT_TRUE(set.Add(SlotKind::Boot, Sparse("boot.lsu", 1, 100000)));
  ASSERT_TRUE(set.Add(SlotKind::Idle, Sparse("hum.lsu", 1, 100001)));
  std::vector<int> percents;
  const auto sounds = Levelling::SoundsOf(set);
  ASSERT_TRUE(Levelling::Measure(sounds, EnergyMeter::Make, [&](int percent) {
    percents.push_back(percent);
    return true;
  }));
  // Seven blocks of 16,384 samples each.
  ASSERT_EQ(percents.size(), 14U);
  EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
  EXPECT_EQ(percents.front(), 8);  // 16,386 of 200,001
  EXPECT_EQ(percents.back(), 100);

  int asked = 0;
  const auto stopped = Levelling::Measure(sounds, EnergyMeter::Make, [&](int) { return ++asked < 9; });
  ASSERT_FALSE(stopped);
  EXPECT_EQ(stopped.Why().kind, base::FailureKind::Cancelled);
  EXPECT_EQ(asked, 9);
}

TEST_F(LevellingTest, ChangesNothingInASetThatIsAnotherByNow) {
  ASSERT_TRUE(set.Add(SlotKind::Boot, Sparse("boot.lsu", 1)));
  ASSERT_TRUE(set.Add(SlotKind::Motion, Sparse("a.lsu", 1)));
  ASSERT_TRUE(set.Add(SlotKind::Motion, Sparse("b.lsu", 100)));
  const LevelPlan plan = LevelPlan::Of(Measured(), EvenBalance());
  set.Move(SlotKind::Motion, 1, 2);
  EXPECT_EQ(Levelling::Apply(plan, set).Why().kind, base::FailureKind::Changed);
  set.Undo();
  set.Remove(SlotKind::Motion, 2);
  EXPECT_EQ(Levelling::Apply(plan, set).Why().kind, base::FailureKind::Changed);
  EXPECT_EQ(Names(SlotKind::Boot), "boot.lsu@100");
  EXPECT_EQ(Names(SlotKind::Motion), "a.lsu@100");
  EXPECT_EQ(set.UndoText(), "Remove b.lsu");
}

TEST_F(LevellingTest, IsRefusedWhileTheSetIsLoading) {
  ASSERT_TRUE(set.Add(SlotKind::Boot, Sparse("boot.lsu", 1)));
  ASSERT_TRUE(set.Save(folder / "set.lscfg", support::AnyDisk()));
  const LevelPlan plan = LevelPlan::Of(Measured(), EvenBalance());
  bool wasAsked = false;
  static_cast<void>(set.Load(folder / "set.lscfg", [&] {
    wasAsked = true;
    EXPECT_EQ(Levelling::Apply(plan, set).Why().kind, base::FailureKind::Busy);
  }));
  EXPECT_TRUE(wasAsked);
}

TEST_F(LevellingTest, WhatTheBoardPlaysIsLevelThenButForWhatWasTold) {
  std::mt19937 random(1122);
  for (int run = 0; run < 20; ++run) {
    set.Clear();
    for (const Slot& slot : kSlots)
      for (int number = 1; number <= (slot.isList ? 3 : 1); ++number) {
        const std::string name = std::to_string(run) + std::string(slot.name) + std::to_string(number) + ".lsu";
        const auto every = std::uniform_int_distribution<std::size_t>(1, 60)(random);
        ASSERT_TRUE(set.Add(slot.kind, Sparse(name, every, 3000)));
        set.SetVolume(slot.kind, number, std::uniform_int_distribution<std::int16_t>(0, 200)(random));
      }
    Balance balance;
    for (const Slot& slot : kSlots) balance.Set(slot.kind, std::uniform_real_distribution(-6.0, 6.0)(random));
    const LevelPlan plan = LevelPlan::Of(Measured(), balance);
    ASSERT_TRUE(Levelling::Apply(plan, set));

    // All are off the one at 100 % by their balance.
    std::optional<double> common;
    for (const LevelledSound& sound : plan.sounds)
      if (sound.to == 100) common = Played(set.At(sound.place)) - balance.Of(sound.place.kind);
    ASSERT_TRUE(common);
    for (const LevelledSound& sound : plan.sounds) {
      EXPECT_GE(sound.to, 1);
      EXPECT_LE(sound.to, 100);
      if (std::abs(sound.excess) > LevelPlan::kTolerance) continue;
      EXPECT_NEAR(Played(set.At(sound.place)) - balance.Of(sound.place.kind), *common, LevelPlan::kTolerance + 0.2)
          << sound.path << " at " << sound.to << " in run " << run;
    }
  }
}

}  // namespace
}  // namespace kestrin::core::sound
