// SPDX-License-Identifier: MIT
// With an LED driver online there are two pages: what is not seen is not changed.

#include <QComboBox>
#include <QMenu>
#include <QTabBar>
#include <QTest>

#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

constexpr int kSounds = 0;
constexpr int kLed = 1;
constexpr const char* kElsewhere = "The sound set is on the page \"Sounds\".";

class LedPage : public MainFixture {
 protected:
  QTabBar& Tabs() { return Find<QTabBar>("PageTabs"); }
  /// As if it were pressed wherever the keyboard is.
  void Press(Qt::Key key) {
    window->activateWindow();
    ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
    QWidget* const focused = window->focusWidget();
    QTest::keyClick(focused != nullptr ? focused : window.get(), key, Qt::ControlModifier);
    QApplication::processEvents();
  }
  /// A set with a change that can be taken back, on the page of the sounds.
  void MakeChangedSet() {
    Tabs().setCurrentIndex(kSounds);
    window->OpenSet(CompleteSet());
    auto& list = Find<QListView>("MtFileList");
    list.setCurrentIndex(list.model()->index(0, 0));
    QTest::keyClick(&list, Qt::Key_Delete);
    ASSERT_EQ(Motions(), 0);
  }
  [[nodiscard]] int Motions() const { return Find<QListView>("MtFileList").model()->rowCount(); }
  void PullOut() {
    agent->Unplug();
    Tick("NoticeTimer");
  }
  void PlugIn() {
    agent->Plug();
    Tick("NoticeTimer");
    Tick("GoOnlineTimer");
  }
};

TEST_F(LedPage, HasTabsOnlyWithAnLedDriver) {
  Start();
  EXPECT_FALSE(Tabs().isVisible());
  window.reset();
  Start("id=4095");
  ASSERT_TRUE(Tabs().isVisible());
  EXPECT_EQ(Tabs().currentIndex(), kLed);
  EXPECT_EQ(Tabs().tabText(kSounds).remove('&'), "Sounds");
  EXPECT_EQ(Tabs().tabText(kLed).remove('&'), "LED driver");
  EXPECT_EQ(Tabs().accessibleName(), "Page");
}

TEST_F(LedPage, LeadsToTheSoundsAndBackByMouseAndByKeyboard) {
  Start("id=4095");
  QTest::mouseClick(&Tabs(), Qt::LeftButton, Qt::NoModifier, Tabs().tabRect(kSounds).center());
  EXPECT_TRUE(Shown("MtFileList"));
  EXPECT_FALSE(Shown("frmLED"));
  QTest::keyClick(&Tabs(), Qt::Key_Right);
  EXPECT_TRUE(Shown("frmLED"));
  EXPECT_FALSE(Shown("MtFileList"));
  QTest::keyClick(&Tabs(), Qt::Key_Left);
  EXPECT_TRUE(Shown("MtFileList"));
  EXPECT_NE(Tabs().focusPolicy() & Qt::TabFocus, 0);
}

TEST_F(LedPage, KeysForTheSetDoNothingWhileItIsNotSeen) {
  Start("id=4095");
  ASSERT_NO_FATAL_FAILURE(MakeChangedSet());
  Tabs().setCurrentIndex(kLed);
  // A dialog or question would be one that the test does not expect. Opening and saving is for LED settings here.
  for (const Qt::Key key : {Qt::Key_Z, Qt::Key_N}) ASSERT_NO_FATAL_FAILURE(Press(key));
  EXPECT_EQ(Motions(), 0);
  EXPECT_TRUE(LabelText("SetLabel").startsWith("complete"));
  for (const char* const name : {"LoadBtn", "SaveBtn", "UndoBtn", "RedoBtn"})
    EXPECT_FALSE(Button(name).isEnabled()) << name;
  EXPECT_EQ(Button("LoadBtn").toolTip(), kElsewhere);
  EXPECT_EQ(Button("SaveBtn").toolTip(), kElsewhere);

  Tabs().setCurrentIndex(kSounds);
  for (const char* const name : {"LoadBtn", "SaveBtn", "UndoBtn"}) EXPECT_TRUE(Button(name).isEnabled()) << name;
  ASSERT_NO_FATAL_FAILURE(Press(Qt::Key_Z));
  EXPECT_EQ(Motions(), 1);
}

TEST_F(LedPage, SetsThatComeFromElsewhereAreSeenBeforeTheyAreOpened) {
  Start("id=4095");
  ASSERT_NO_FATAL_FAILURE(MakeChangedSet());
  Tabs().setCurrentIndex(kLed);
  bool seen = false;
  dialogs.unsavedAnswers = {ui::kit::Dialogs::Unsaved::Discard};
  dialogs.whileAsking = [&] { seen = Shown("MtFileList"); };
  window->OpenSet(folder / "complete.lscfg");
  EXPECT_TRUE(seen);
  EXPECT_TRUE(Shown("MtFileList"));
  EXPECT_EQ(Motions(), 1);
}

TEST_F(LedPage, ABoardThatKeepsFailingLeavesThePersonWhereTheyAre) {
  Start("id=4095,fault=write:3,fault=write:7");
  ASSERT_EQ(LabelText("SerialLabel"), "");
  Tabs().setCurrentIndex(kSounds);
  Tick("GoOnlineTimer");
  ASSERT_EQ(LabelText("SerialLabel"), "") << "it fails a second time";
  EXPECT_EQ(Tabs().currentIndex(), kSounds);
  Tick("GoOnlineTimer");
  ASSERT_EQ(LabelText("SerialLabel"), "Kestrin LED Driver Serial Number: 4B535401");
  EXPECT_EQ(Tabs().currentIndex(), kSounds);
}

TEST_F(LedPage, ABoardThatIsPluggedInShowsItsPage) {
  Start("id=4095");
  Tabs().setCurrentIndex(kSounds);
  PullOut();
  EXPECT_TRUE(Shown("MtFileList"));
  PlugIn();
  EXPECT_TRUE(Shown("frmLED"));
}

TEST_F(LedPage, OfflineASetTakesItsPlaceAsSoonAsItIsOpened) {
  Start("id=4095");
  PullOut();
  ASSERT_TRUE(Shown("frmLED"));
  EXPECT_TRUE(Button("LoadBtn").isEnabled());
  EXPECT_FALSE(Button("UndoBtn").isEnabled());
  dialogs.filesToOpen = {Text(CompleteSet())};
  Button("LoadBtn").click();
  EXPECT_TRUE(Shown("MtFileList"));
}

}  // namespace
}  // namespace kestrin::support
