// SPDX-License-Identifier: MIT
#include <QRadioButton>

#include "SoundPageFixture.h"

namespace kestrin::ui::sound {
namespace {

class SlotKeyboardTest : public SoundPageFixture {
 protected:
  /// Puts a sound into every single slot and three into every list.
  void FillAll() {
    for (const core::sound::Slot& slot : core::sound::kSlots) Fill(slot.kind, slot.isList ? 3 : 1);
  }
  /// Presses the Tab key until that control has the keyboard.
  void TabTo(const char* name) {
    for (int step = 0; step < 60; ++step) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      if (QApplication::focusWidget()->objectName() == QLatin1String(name)) return;
    }
    FAIL() << "Tab does not lead to " << name;
  }
};

TEST_F(SlotKeyboardTest, AltAndALetterLeadToEachSlot) {
  const std::vector<std::tuple<Qt::Key, core::sound::SlotKind, const char*>> keys{
      {Qt::Key_B, core::sound::SlotKind::Boot, "BootFileList"},
      {Qt::Key_O, core::sound::SlotKind::PwrOn, "PwrOnFileList"},
      {Qt::Key_F, core::sound::SlotKind::PwrOff, "PwrOffFileList"},
      {Qt::Key_I, core::sound::SlotKind::Idle, "IdleFileList"},
      {Qt::Key_M, core::sound::SlotKind::Motion, "MtFileList"},
      {Qt::Key_P, core::sound::SlotKind::Impact, "ImpFileList"},
      {Qt::Key_L, core::sound::SlotKind::Lockup, "LkfileList"},
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
  Fill(core::sound::SlotKind::Motion, 4);
  Click("MtFileList", "motion 2.lsu");
  Click("MtFileList", "motion 3.lsu", Qt::ShiftModifier);
  QTest::keyClick(List("MtFileList"), Qt::Key_Delete);
  EXPECT_EQ(Shown("MtFileList"), "motion 1.lsu motion 4.lsu");
  page->UndoAction()->trigger();
  EXPECT_EQ(set.Count(core::sound::SlotKind::Motion), 4);
}

TEST_F(SlotKeyboardTest, TheArrowKeysSelectSounds) {
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  set.SetVolume(core::sound::SlotKind::Motion, 2, 33);
  page->FocusSlot(core::sound::SlotKind::Motion);
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 1");
  QTest::keyClick(List("MtFileList"), Qt::Key_Down);
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 2");
  EXPECT_EQ(Text("VolumeLabel"), "33 %");
}

TEST_F(SlotKeyboardTest, CtrlAndTheArrowKeysReorder) {
  Open();
  Fill(core::sound::SlotKind::Motion, 3);
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
  Fill(core::sound::SlotKind::Motion, 2);
  Fill(core::sound::SlotKind::Impact, 2);
  Click("MtFileList", "motion 1.lsu");
  Click("ImpFileList", "impact 2.lsu");
  EXPECT_FALSE(List("MtFileList")->selectionModel()->hasSelection());
  Click("FileList", "a.lsu");
  EXPECT_FALSE(List("ImpFileList")->selectionModel()->hasSelection());
}

TEST_F(SlotKeyboardTest, TabReachesEveryControlOfThePage) {
  Sound("a.lsu", 100);
  Open();
  Fill(core::sound::SlotKind::Boot, 1);
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

TEST_F(SlotKeyboardTest, TabLeavesTheSelectedSoundSelected) {
  Sound("a.lsu", 100);
  Open();
  FillAll();
  set.SetVolume(core::sound::SlotKind::Motion, 2, 33);
  page->FocusSlot(core::sound::SlotKind::Motion);
  QTest::keyClick(List("MtFileList"), Qt::Key_Down);
  for (const char* control : {"LkfileList", "VolSlider", "FileList", "BootFileList", "MtFileList", "VolSlider"}) {
    ASSERT_NO_FATAL_FAILURE(TabTo(control));
    EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 2") << control;
    EXPECT_EQ(Text("VolumeLabel"), "33 %") << control;
    EXPECT_EQ(List("MtFileList")->selectionModel()->selectedRows().size(), 1) << control;
  }
  QTest::keyClick(Get<QWidget>("VolSlider"), Qt::Key_Right);
  EXPECT_EQ(set.At({core::sound::SlotKind::Motion, 2}).Volume(), 34);
}

TEST_F(SlotKeyboardTest, TabLeavesTheChosenFilesChosen) {
  for (const char* name : {"a.lsu", "b.lsu", "c.lsu"}) Sound(name, 100);
  Open();
  FillAll();
  Click("FileList", "a.lsu");
  Click("FileList", "b.lsu", Qt::ShiftModifier);
  ASSERT_NO_FATAL_FAILURE(TabTo("LkfileList"));
  ASSERT_NO_FATAL_FAILURE(TabTo("FileList"));
  Get<QRadioButton>("ImpOption")->setChecked(true);
  QTest::keyClick(List("FileList"), Qt::Key_Return);
  EXPECT_EQ(Names(core::sound::SlotKind::Impact),
            "impact 1.lsu@100 impact 2.lsu@100 impact 3.lsu@100 a.lsu@100 b.lsu@100");
}

TEST_F(SlotKeyboardTest, BehindTabEveryKeyTakesTheRowWhereTheKeyboardIs) {
  struct Case {
    const char* list;
    Qt::Key key;
    const char* selected;
  };
  const std::vector<Case> cases{
      {"MtFileList", Qt::Key_Down, "Motion 2"},      {"MtFileList", Qt::Key_Up, "Motion 1"},
      {"MtFileList", Qt::Key_Home, "Motion 1"},      {"MtFileList", Qt::Key_End, "Motion 3"},
      {"MtFileList", Qt::Key_Space, "Motion 1"},     {"BootFileList", Qt::Key_Down, "Boot"},
      {"BootFileList", Qt::Key_PageDown, "Boot"},    {"BootFileList", Qt::Key_Space, "Boot"},
      {"PwrOnFileList", Qt::Key_PageUp, "Power On"},
  };
  Open();
  FillAll();
  for (const Case& each : cases) {
    page->FocusSlot(core::sound::SlotKind::Lockup);
    // As nobody has been in the list before.
    List(each.list)->setCurrentIndex({});
    ASSERT_NO_FATAL_FAILURE(TabTo(each.list));
    ASSERT_EQ(Text("SelectedPlaceLabel"), "Lock-up 1") << each.list;
    QTest::keyClick(List(each.list), each.key);
    EXPECT_EQ(Text("SelectedPlaceLabel"), each.selected) << each.list << " " << each.key;
    EXPECT_FALSE(List("LkfileList")->selectionModel()->hasSelection()) << each.list << " " << each.key;
  }
  EXPECT_EQ(played, (QStringList{PathText("motion 1.lsu"), PathText("boot 1.lsu")}));
}

TEST_F(SlotKeyboardTest, BehindTabDeleteAndEnterTakeTheRowWhereTheKeyboardIs) {
  Sound("a.lsu", 100);
  Open();
  FillAll();
  page->FocusSlot(core::sound::SlotKind::Lockup);
  ASSERT_NO_FATAL_FAILURE(TabTo("FileList"));
  QTest::keyClick(List("FileList"), Qt::Key_Return);
  EXPECT_EQ(set.Count(core::sound::SlotKind::Lockup), 4);
  ASSERT_NO_FATAL_FAILURE(TabTo("ImpFileList"));
  QTest::keyClick(List("ImpFileList"), Qt::Key_Delete);
  EXPECT_EQ(Shown("ImpFileList"), "impact 2.lsu impact 3.lsu");
}

}  // namespace
}  // namespace kestrin::ui::sound
