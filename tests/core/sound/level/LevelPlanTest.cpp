// SPDX-License-Identifier: MIT
#include "core/sound/level/LevelPlan.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace kestrin::core::sound {
namespace {

MeasuredSound Sound(SlotKind kind, int position, std::optional<double> lufs, std::int16_t volume = 100) {
  return {{kind, position},
          "/sounds/" + std::string(SlotOf(kind).name) + std::to_string(position) + ".lsu",
          volume,
          lufs,
          ""};
}

/// Every slot as loud as every other.
Balance Even() {
  Balance balance;
  for (const Slot& slot : kSlots) balance.Set(slot.kind, 0);
  return balance;
}

std::vector<int> Volumes(const std::vector<MeasuredSound>& sounds, const Balance& balance) {
  std::vector<int> volumes;
  for (const LevelledSound& sound : LevelPlan::Of(sounds, balance).sounds) volumes.push_back(sound.to);
  return volumes;
}

TEST(Balance, HasTheHumBelowTheSwingsAndAllBelowTheHits) {
  const Balance usual;
  EXPECT_LT(usual.Of(SlotKind::Idle), usual.Of(SlotKind::Motion));
  for (const Slot& slot : kSlots)
    if (slot.kind != SlotKind::Impact) {
      EXPECT_LT(usual.Of(slot.kind), usual.Of(SlotKind::Impact)) << slot.name;
      EXPECT_LE(usual.Of(SlotKind::Idle), usual.Of(slot.kind)) << slot.name;
    }
}

TEST(Balance, KeepsEachSlotsValueWithinTheRange) {
  Balance balance;
  double units = -20;
  for (const Slot& slot : kSlots) balance.Set(slot.kind, units += 2.5);
  units = -20;
  for (const Slot& slot : kSlots) EXPECT_EQ(balance.Of(slot.kind), units += 2.5) << slot.name;
  EXPECT_NE(balance, Balance());
  balance.Set(SlotKind::Boot, -100);
  balance.Set(SlotKind::Idle, 100);
  EXPECT_EQ(balance.Of(SlotKind::Boot), -24);
  EXPECT_EQ(balance.Of(SlotKind::Idle), 24);
}

TEST(LevelPlan, TheQuietestIsPlayedAtFullVolumeAndTheOthersComeDownToIt) {
  // 20 LU are a tenth, 6.02 a half, 12.04 a quarter, 3 LU 0.708 of the height.
  EXPECT_EQ(
      Volumes({Sound(SlotKind::Motion, 1, -20), Sound(SlotKind::Motion, 2, -40), Sound(SlotKind::Motion, 3, -27.96),
               Sound(SlotKind::Motion, 4, -33.98), Sound(SlotKind::Motion, 5, -37)},
              Even()),
      (std::vector<int>{10, 100, 25, 50, 71}));
}

TEST(LevelPlan, TheBalanceOfTheSlotsIsKept) {
  // As loud as each other: what shall be 6 LU lower is played at 50.1 %, 3 lower at 70.8 %, 2 lower at 79.4 %.
  EXPECT_EQ(Volumes({Sound(SlotKind::Boot, 1, -15), Sound(SlotKind::PwrOn, 1, -15), Sound(SlotKind::PwrOff, 1, -15),
                     Sound(SlotKind::Idle, 1, -15), Sound(SlotKind::Motion, 1, -15), Sound(SlotKind::Impact, 1, -15),
                     Sound(SlotKind::Lockup, 1, -15)},
                    Balance()),
            (std::vector<int>{79, 79, 79, 50, 71, 100, 79}));
  // The hum at -15 may be 9 LU below the others: it is the loudest for its share and yet not to be lowered most.
  Balance balance = Even();
  balance.Set(SlotKind::Idle, -9);
  // Shares: hum -6, hit -18, swing -12; all follow the hit: 12 LU are 25.1 %, 6 LU 50.1 %.
  EXPECT_EQ(Volumes({Sound(SlotKind::Idle, 1, -15), Sound(SlotKind::Impact, 1, -18), Sound(SlotKind::Motion, 1, -12)},
                    balance),
            (std::vector<int>{25, 100, 50}));
  // The quietest for its share, not the quietest, has 100 %.
  EXPECT_EQ(Volumes({Sound(SlotKind::Idle, 1, -20), Sound(SlotKind::Impact, 1, -18)}, balance),
            (std::vector<int>{45, 100}));  // 7 LU: 44.7 %
}

TEST(LevelPlan, OnlyDifferencesOfTheBalanceCount) {
  Balance shifted;
  for (const Slot& slot : kSlots) shifted.Set(slot.kind, Balance().Of(slot.kind) + 7.5);
  const std::vector<MeasuredSound> sounds{Sound(SlotKind::Idle, 1, -15), Sound(SlotKind::Impact, 1, -18),
                                          Sound(SlotKind::Motion, 1, -12)};
  EXPECT_EQ(Volumes(sounds, shifted), Volumes(sounds, Balance()));
}

TEST(LevelPlan, VolumesThatTheSetHoldsDoNotMatter) {
  const LevelPlan plan = LevelPlan::Of({Sound(SlotKind::Boot, 1, -20, 150), Sound(SlotKind::PwrOn, 1, -26.02, -40),
                                        Sound(SlotKind::PwrOff, 1, -20, 0), Sound(SlotKind::Idle, 1, -20, 32767)},
                                       Even());
  const std::vector<std::pair<int, int>> expected{{150, 50}, {-40, 100}, {0, 50}, {32767, 50}};
  ASSERT_EQ(plan.sounds.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i)
    EXPECT_EQ((std::pair<int, int>(plan.sounds[i].from, plan.sounds[i].to)), expected[i]);
  EXPECT_EQ(plan.Changes(), 4);
}

TEST(LevelPlan, ASoundWithoutLoudnessKeepsItsVolumeAndIsTold) {
  MeasuredSound broken = Sound(SlotKind::Motion, 2, std::nullopt, 170);
  broken.reason = "\"/sounds/motion2.lsu\" has changed since it was added. Add it again.";
  const LevelPlan plan =
      LevelPlan::Of({Sound(SlotKind::Boot, 1, std::nullopt, 80), Sound(SlotKind::Motion, 1, -20), broken}, Even());
  EXPECT_EQ(plan.sounds[0].to, 80);
  EXPECT_EQ(plan.sounds[2].to, 170);
  EXPECT_EQ(plan.Changes(), 0);
  EXPECT_EQ(plan.OutOfReach(),
            (std::vector<std::string>{
                "\"boot1.lsu\" (Boot) is too quiet to be measured: its volume stays 80 %. Set it by ear.",
                "\"motion2.lsu\" (Motion 2): its volume stays 170 %. \"/sounds/motion2.lsu\" has changed since it was "
                "added. Add it again."}));
}

TEST(LevelPlan, AVolumeBelowOnePercentIsNotPlayedAndTold) {
  // 50 LU would be 0.316 %: 1 % is 10 LU more.
  const LevelPlan plan = LevelPlan::Of({Sound(SlotKind::Motion, 1, -10), Sound(SlotKind::Motion, 2, -60)}, Even());
  EXPECT_EQ(plan.sounds[0].to, 1);
  EXPECT_NEAR(plan.sounds[0].excess, 10.0, 1e-9);
  EXPECT_EQ(plan.sounds[1].excess, 0);
  EXPECT_EQ(plan.OutOfReach(),
            (std::vector<std::string>{
                "\"motion1.lsu\" (Motion 1) stays 10.0 LU too loud at 1 %: there is no lower volume.",
                "\"motion2.lsu\" (Motion 2) is much quieter than the others, which follow it down to below 10 %, where "
                "a board is noisy. Use a denser sound in its place, or give its slot a lower balance."}));
}

TEST(LevelPlan, WhatWholePercentsMissByMoreThanHalfAUnitIsTold) {
  // 32 LU are 2.51 %, rounded to 3: 20 * log10(3 / 2.512) = 1.54 more. 33 LU are 2.24 %, rounded to 2: 0.98 less.
  // 20.5 LU are 9.44 %, rounded to 9: 0.41 less, which is within the tolerance.
  const LevelPlan plan = LevelPlan::Of({Sound(SlotKind::Motion, 1, -8), Sound(SlotKind::Motion, 2, -7),
                                        Sound(SlotKind::Motion, 3, -19.5), Sound(SlotKind::Motion, 4, -40)},
                                       Even());
  EXPECT_EQ(plan.sounds[0].to, 3);
  EXPECT_NEAR(plan.sounds[0].excess, 1.5424, 1e-4);
  EXPECT_EQ(plan.sounds[1].to, 2);
  EXPECT_NEAR(plan.sounds[1].excess, -0.9794, 1e-4);
  EXPECT_EQ(plan.sounds[2].to, 9);
  EXPECT_NEAR(plan.sounds[2].excess, -0.4151, 1e-4);
  const std::vector<std::string> texts = plan.OutOfReach();
  ASSERT_EQ(texts.size(), 3U);
  EXPECT_EQ(texts[0], "\"motion1.lsu\" (Motion 1) stays 1.5 LU too loud at 3 %: volumes are whole percents.");
  EXPECT_EQ(texts[1], "\"motion2.lsu\" (Motion 2) stays 1.0 LU too quiet at 2 %: volumes are whole percents.");
}

TEST(LevelPlan, FromTenPercentOnNothingHasToBeSaid) {
  // 20 LU are exactly 10 %; 20.4 LU are 9.55 %, which is rounded to 10 as well.
  EXPECT_TRUE(
      LevelPlan::Of(
          {Sound(SlotKind::Motion, 1, -20), Sound(SlotKind::Motion, 2, -40), Sound(SlotKind::Motion, 3, -19.6)}, Even())
          .OutOfReach()
          .empty());
  // 21 LU are 8.9 %, rounded to 9.
  EXPECT_EQ(
      LevelPlan::Of({Sound(SlotKind::Motion, 1, -19), Sound(SlotKind::Motion, 2, -40)}, Even()).OutOfReach().size(),
      1U);
}

TEST(LevelPlan, TheHeadlineSaysHowManyVolumesHaveChanged) {
  EXPECT_EQ(LevelPlan::Of({}, Even()).Headline(), "There are no sounds to level. Add some first.");
  EXPECT_EQ(LevelPlan::Of({Sound(SlotKind::Boot, 1, std::nullopt)}, Even()).Headline(),
            "No volume was changed: no sound could be measured.");
  EXPECT_EQ(LevelPlan::Of({Sound(SlotKind::Boot, 1, -9)}, Even()).Headline(), "The volumes are level already.");
  EXPECT_EQ(LevelPlan::Of({Sound(SlotKind::Boot, 1, -9, 50)}, Even()).Headline(),
            "The volumes are level: 1 of 1 has changed.");
  EXPECT_EQ(LevelPlan::Of(
                {Sound(SlotKind::Boot, 1, -9), Sound(SlotKind::Idle, 1, -9, 50), Sound(SlotKind::PwrOn, 1, -3)}, Even())
                .Headline(),
            "The volumes are level: 2 of 3 have changed.");
}

}  // namespace
}  // namespace kestrin::core::sound
