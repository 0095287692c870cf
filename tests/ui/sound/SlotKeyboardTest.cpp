#include <QRadioButton>

#include "SoundPageFixture.h"

namespace kestrin::sound::ui {
namespace {

class SlotKeyboardTest : public SoundPageFixture {};

TEST_F(SlotKeyboardTest, AltAndALetterLeadToEachSlot) {
  const std::vector<std::tuple<Qt::Key, SlotKind, const char*>> keys{
      {Qt::Key_B, SlotKind::Boot, "BootFileList"},     {Qt::Key_O, SlotKind::PwrOn, "PwrOnFileList"},
      {Qt::Key_F, SlotKind::PwrOff, "PwrOffFileList"}, {Qt::Key_I, SlotKind::Idle, "IdleFileList"},
      {Qt::Key_M, SlotKind::Motion, "MtFileList"},     {Qt::Key_P, SlotKind::Impact, "ImpFileList"},
      {Qt::Key_L, SlotKind::Lockup, "LkfileList"},
  };
  Open();
  for (const auto& [key, kind, list] : keys) {
    List("FileList")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), key, Qt::AltModifier);
    EXPECT_EQ(page->SelectedSlot(), kind) << list;
    EXPECT_TRUE(List(list)->hasFocus()) << list;
  }
}

TEST_F(SlotKeyboardTest, DeleteTakesTheSelectedSoundsOutInOneStep) {
  Open();
  Fill(SlotKind::Motion, 4);
  Click("MtFileList", "motion 2.lsu");
  Click("MtFileList", "motion 3.lsu", Qt::ShiftModifier);
  QTest::keyClick(List("MtFileList"), Qt::Key_Delete);
  EXPECT_EQ(Shown("MtFileList"), "motion 1.lsu motion 4.lsu");
  page->UndoAction()->trigger();
  EXPECT_EQ(set.Count(SlotKind::Motion), 4);
}

TEST_F(SlotKeyboardTest, TheArrowKeysSelectSounds) {
  Open();
  Fill(SlotKind::Motion, 2);
  set.SetVolume(SlotKind::Motion, 2, 33);
  page->FocusSlot(SlotKind::Motion);
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 1");
  QTest::keyClick(List("MtFileList"), Qt::Key_Down);
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 2");
  EXPECT_EQ(Text("VolumeLabel"), "33 %");
}

TEST_F(SlotKeyboardTest, CtrlAndTheArrowKeysReorder) {
  Open();
  Fill(SlotKind::Motion, 3);
  Click("MtFileList", "motion 1.lsu");
  QTest::keyClick(List("MtFileList"), Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(Shown("MtFileList"), "motion 2.lsu motion 1.lsu motion 3.lsu");
  // The sound that moved stays the selected one.
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 2");
  EXPECT_EQ(Text("SelectedSoundLabel"), "motion 1.lsu");
  QTest::keyClick(List("MtFileList"), Qt::Key_Up, Qt::ControlModifier);
  QTest::keyClick(List("MtFileList"), Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(Shown("MtFileList"), "motion 1.lsu motion 2.lsu motion 3.lsu");
}

TEST_F(SlotKeyboardTest, OnlyOneSoundIsSelectedOnThePage) {
  Sound("a.lsu", 100);
  Open();
  Fill(SlotKind::Motion, 2);
  Fill(SlotKind::Impact, 2);
  Click("MtFileList", "motion 1.lsu");
  Click("ImpFileList", "impact 2.lsu");
  EXPECT_FALSE(List("MtFileList")->selectionModel()->hasSelection());
  Click("FileList", "a.lsu");
  EXPECT_FALSE(List("ImpFileList")->selectionModel()->hasSelection());
}

TEST_F(SlotKeyboardTest, TabReachesEveryControlOfThePage) {
  Sound("a.lsu", 100);
  Open();
  Fill(SlotKind::Boot, 1);
  Click("BootFileList", "boot 1.lsu");
  QStringList reached;
  QWidget* start = Get<QWidget>("DriveList");
  start->setFocus();
  for (int step = 0; step < 60; ++step) {
    reached.append(QApplication::focusWidget()->objectName());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    if (QApplication::focusWidget() == start) break;
  }
  // The option buttons are one stop, as everywhere; the arrow keys lead from one to the next.
  for (const char* name :
       {"DriveList", "UpBtn", "DirList", "FileList", "BootOption", "BootFileList", "PwrOnFileList", "PwrOffFileList",
        "IdleFileList", "MtFileList", "ImpFileList", "LkfileList", "PlayBtn", "VolSlider"})
    EXPECT_TRUE(reached.contains(QLatin1String(name))) << name << " is not in " << reached.join(' ').toStdString();
  EXPECT_LT(reached.indexOf("DriveList"), reached.indexOf("FileList"));
  EXPECT_LT(reached.indexOf("FileList"), reached.indexOf("BootFileList"));
  EXPECT_LT(reached.indexOf("BootFileList"), reached.indexOf("LkfileList"));
  EXPECT_LT(reached.indexOf("LkfileList"), reached.indexOf("VolSlider"));
}

}  // namespace
}  // namespace kestrin::sound::ui
