// SPDX-License-Identifier: MIT
#include <QProgressBar>

#include "SoundPageFixture.h"

namespace kestrin::ui::sound {
namespace {

class MemoryGaugeTest : public SoundPageFixture {
 protected:
  QProgressBar* Gauge() { return Get<QProgressBar>("MemoryStatus"); }
};

TEST_F(MemoryGaugeTest, TheGaugeGoesFromZeroToTheCapacity) {
  Open();
  EXPECT_EQ(Gauge()->minimum(), 0);
  EXPECT_EQ(Gauge()->maximum(), 2793120);
  EXPECT_EQ(Gauge()->value(), 0);
  EXPECT_EQ(Text("MemoryLabel"), "0.0 s of 58.2 s used");
  set.SetCapacity(4800);
  EXPECT_EQ(Gauge()->maximum(), 4800);
}

TEST_F(MemoryGaugeTest, EveryChangeOfTheSetMovesIt) {
  Open();
  ASSERT_EQ(set.Add(core::sound::SlotKind::Boot, Sound("a.lsu", 48000)).Text(), "");
  EXPECT_EQ(Gauge()->value(), 48000);
  // 72,000 bytes are 70 whole blocks and a rest; with the table 72 blocks of 18 ms, so 2 s behind an erase of 30 s.
  EXPECT_EQ(Text("MemoryLabel"), "1.0 s of 58.2 s used \u00b7 download about 32 s");
  ASSERT_EQ(set.Add(core::sound::SlotKind::Motion, Sound("b.lsu", 24000)).Text(), "");
  EXPECT_EQ(Gauge()->value(), 72000);
  set.Remove(core::sound::SlotKind::Boot, 1);
  EXPECT_EQ(Gauge()->value(), 24000);
  set.Undo();
  EXPECT_EQ(Gauge()->value(), 72000);
}

TEST_F(MemoryGaugeTest, ItTellsWhatEachSlotTakes) {
  Open();
  set.SetCapacity(480000);
  ASSERT_EQ(set.Add(core::sound::SlotKind::Boot, Sound("a.lsu", 48000)).Text(), "");
  ASSERT_EQ(set.Add(core::sound::SlotKind::Motion, Sound("b.lsu", 24000)).Text(), "");
  ASSERT_EQ(set.Add(core::sound::SlotKind::Motion, Sound("c.lsu", 96000)).Text(), "");
  EXPECT_EQ(Gauge()->toolTip().toStdString(), "Boot: 1.0 s, 10.0 %\nMotion: 2.5 s, 25.0 %");
}

TEST_F(MemoryGaugeTest, ASetThatIsTooLargeFillsItAndSaysByHowMuch) {
  Open();
  ASSERT_EQ(set.Add(core::sound::SlotKind::Boot, Sound("a.lsu", 48000)).Text(), "");
  EXPECT_TRUE(set.Fits());
  set.SetCapacity(48000);
  EXPECT_TRUE(set.Fits());
  EXPECT_EQ(Gauge()->value(), 48000);
  set.SetCapacity(47999);
  EXPECT_FALSE(set.Fits());
  EXPECT_EQ(Gauge()->value(), 47999);
  EXPECT_EQ(Gauge()->maximum(), 47999);
  // One sample too much is a tenth of a second to take out, never 0.0 s.
  EXPECT_EQ(Text("MemoryLabel"), "1.0 s of 1.0 s used \u00b7 0.1 s too much: take some sounds out");
  set.Undo();
  EXPECT_EQ(Gauge()->value(), 0);
}

}  // namespace
}  // namespace kestrin::ui::sound
