// SPDX-License-Identifier: MIT
#include <QSlider>

#include "SoundPageFixture.h"

namespace kestrin::ui::sound {
namespace {

class VolumeTest : public SoundPageFixture {
 protected:
  QSlider* Slider() { return Get<QSlider>("VolSlider"); }
};

TEST_F(VolumeTest, TheSliderGoesFromZeroToAHundred) {
  Open();
  EXPECT_EQ(Slider()->minimum(), 0);
  EXPECT_EQ(Slider()->maximum(), 100);
  EXPECT_FALSE(Slider()->isEnabled());
}

TEST_F(VolumeTest, AClickMovesTheSliderToTheSoundsVolume) {
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  Fill(core::sound::SlotKind::Idle, 1);
  set.SetVolume(core::sound::SlotKind::Motion, 2, 35);
  set.SetVolume(core::sound::SlotKind::Idle, 1, 70);
  Click("MtFileList", "motion 2.lsu");
  EXPECT_EQ(Slider()->value(), 35);
  EXPECT_EQ(Text("VolumeLabel"), "35 %");
  EXPECT_EQ(Text("SelectedSoundLabel"), "motion 2.lsu");
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 2");
  Click("IdleFileList", "idle 1.lsu");
  EXPECT_EQ(Slider()->value(), 70);
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Idle");
  Click("MtFileList", "motion 1.lsu");
  EXPECT_EQ(Slider()->value(), 100);
  // Looking at volumes changes none.
  EXPECT_EQ(Names(core::sound::SlotKind::Motion), "motion 1.lsu@100 motion 2.lsu@35");
  EXPECT_EQ(Names(core::sound::SlotKind::Idle), "idle 1.lsu@70");
}

TEST_F(VolumeTest, TheSliderSetsTheVolumeOfTheSelectedSoundOnly) {
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  Fill(core::sound::SlotKind::Impact, 2);
  Click("ImpFileList", "impact 2.lsu");
  Slider()->setValue(55);
  EXPECT_EQ(Names(core::sound::SlotKind::Impact), "impact 1.lsu@100 impact 2.lsu@55");
  EXPECT_EQ(Names(core::sound::SlotKind::Motion), "motion 1.lsu@100 motion 2.lsu@100");
  EXPECT_EQ(Text("VolumeLabel"), "55 %");
}

TEST_F(VolumeTest, TheSliderSetsTheVolumeOfAllSelectedSoundsInOneStep) {
  Open();
  Fill(core::sound::SlotKind::Motion, 4);
  set.SetVolume(core::sound::SlotKind::Motion, 1, 20);
  Click("MtFileList", "motion 1.lsu");
  Click("MtFileList", "motion 3.lsu", Qt::ShiftModifier);
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 3 and 2 more");
  Slider()->setValue(70);
  Slider()->setValue(60);
  EXPECT_EQ(Names(core::sound::SlotKind::Motion), "motion 1.lsu@60 motion 2.lsu@60 motion 3.lsu@60 motion 4.lsu@100");
  page->UndoAction()->trigger();
  EXPECT_EQ(Names(core::sound::SlotKind::Motion), "motion 1.lsu@20 motion 2.lsu@100 motion 3.lsu@100 motion 4.lsu@100");
}

TEST_F(VolumeTest, SoundsThatAreSelectedByKeyCountAsWell) {
  Open();
  Fill(core::sound::SlotKind::Motion, 3);
  Click("MtFileList", "motion 2.lsu");
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 2");
  List("MtFileList")->setFocus();
  QTest::keyClick(List("MtFileList"), Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 2 and 2 more");
  Slider()->setValue(10);
  EXPECT_EQ(Names(core::sound::SlotKind::Motion), "motion 1.lsu@10 motion 2.lsu@10 motion 3.lsu@10");
  Click("MtFileList", "motion 1.lsu");
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 1");
  Slider()->setValue(30);
  EXPECT_EQ(Names(core::sound::SlotKind::Motion), "motion 1.lsu@30 motion 2.lsu@10 motion 3.lsu@10");
}

TEST_F(VolumeTest, ThePressOfAKeyMovesTheSlider) {
  Open();
  Fill(core::sound::SlotKind::Boot, 1);
  Click("BootFileList", "boot 1.lsu");
  Slider()->setFocus();
  QTest::keyClick(Slider(), Qt::Key_Left);
  EXPECT_EQ(Names(core::sound::SlotKind::Boot), "boot 1.lsu@99");
  QTest::keyClick(Slider(), Qt::Key_Home);
  EXPECT_EQ(Names(core::sound::SlotKind::Boot), "boot 1.lsu@0");
}

TEST_F(VolumeTest, AVolumeThatTheSliderCannotShowIsNotCutOff) {
  Open();
  Fill(core::sound::SlotKind::Boot, 1);
  set.SetVolume(core::sound::SlotKind::Boot, 1, 140);
  Click("BootFileList", "boot 1.lsu");
  EXPECT_EQ(Slider()->value(), 100);
  EXPECT_EQ(Text("VolumeLabel"), "140 %");
  EXPECT_EQ(Names(core::sound::SlotKind::Boot), "boot 1.lsu@140");
}

TEST_F(VolumeTest, WithoutASelectedSoundTheSliderChangesNothing) {
  Sound("a.lsu", 100);
  Open();
  Fill(core::sound::SlotKind::Boot, 1);
  Click("BootFileList", "boot 1.lsu");
  Click("FileList", "a.lsu");
  EXPECT_FALSE(Slider()->isEnabled());
  EXPECT_EQ(Text("SelectedSoundLabel"), "a.lsu");
  Slider()->setValue(3);
  EXPECT_EQ(Names(core::sound::SlotKind::Boot), "boot 1.lsu@100");
  Click("BootFileList", "boot 1.lsu");
  EXPECT_TRUE(Slider()->isEnabled());
  set.Remove(core::sound::SlotKind::Boot, 1);
  EXPECT_FALSE(Slider()->isEnabled());
  EXPECT_EQ(Text("SelectedSoundLabel"), "No sound selected");
}

TEST_F(VolumeTest, WhileBusyTheSliderCannotBeMoved) {
  Open();
  Fill(core::sound::SlotKind::Boot, 1);
  Click("BootFileList", "boot 1.lsu");
  page->SetBusy(true);
  EXPECT_FALSE(Slider()->isEnabled());
  page->SetBusy(false);
  EXPECT_TRUE(Slider()->isEnabled());
}

}  // namespace
}  // namespace kestrin::ui::sound
