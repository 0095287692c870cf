// SPDX-License-Identifier: MIT
#include <QAction>

#include "SoundPageFixture.h"

namespace kestrin::ui::sound {
namespace {

class UndoRedoTest : public SoundPageFixture {};

TEST_F(UndoRedoTest, TheActionsSayWhatTheyDo) {
  Open();
  EXPECT_EQ(page->UndoAction()->text(), "Undo");
  EXPECT_FALSE(page->UndoAction()->isEnabled());
  EXPECT_FALSE(page->RedoAction()->isEnabled());
  Fill(core::sound::SlotKind::Boot, 1);
  EXPECT_EQ(page->UndoAction()->text(), "Undo: Add boot 1.lsu");
  EXPECT_TRUE(page->UndoAction()->isEnabled());
  page->UndoAction()->trigger();
  EXPECT_EQ(Shown("BootFileList"), "");
  EXPECT_EQ(page->RedoAction()->text(), "Redo: Add boot 1.lsu");
  page->RedoAction()->trigger();
  EXPECT_EQ(Shown("BootFileList"), "boot 1.lsu");
}

TEST_F(UndoRedoTest, TheUsualKeysUndoAndRedo) {
  Open();
  Fill(core::sound::SlotKind::Motion, 1);
  List("FileList")->setFocus();
  QTest::keyClick(List("FileList"), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Shown("MtFileList"), "");
  QTest::keyClick(List("FileList"), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Shown("MtFileList"), "motion 1.lsu");
}

TEST_F(UndoRedoTest, AfterAnActionOfThePageUndoIsPossible) {
  Sound("a.lsu", 100);
  Open();
  DoubleClick("FileList", "a.lsu");
  EXPECT_TRUE(page->UndoAction()->isEnabled());
  EXPECT_EQ(page->UndoAction()->text(), "Undo: Add a.lsu");
}

TEST_F(UndoRedoTest, TheShownVolumeFollows) {
  Open();
  Fill(core::sound::SlotKind::Motion, 1);
  Click("MtFileList", "motion 1.lsu");
  set.SetVolume(core::sound::SlotKind::Motion, 1, 20);
  EXPECT_EQ(Text("VolumeLabel"), "20 %");
  page->UndoAction()->trigger();
  EXPECT_EQ(Text("VolumeLabel"), "100 %");
}

}  // namespace
}  // namespace kestrin::ui::sound
