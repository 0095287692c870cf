// SPDX-License-Identifier: MIT
// What people without a mouse need of the window: the keyboard stays where it was, Enter presses, menus open.

#include <QCursor>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

class Keyboard : public MainFixture {
 protected:
  void StartWithSet(const std::string& board = "") {
    Start(board);
    window->OpenSet(CompleteSet(2000));
    ASSERT_EQ(dialogs.errors, std::vector<QString>());
    window->activateWindow();
    ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
  }
  QPushButton& FrameButton() { return Find<QPushButton>("CancelBtn"); }
  void PressKey(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QWidget* const focused = QApplication::focusWidget();
    ASSERT_NE(focused, nullptr);
    QTest::keyClick(focused, key, held);
  }
  [[nodiscard]] std::string Focused() const {
    const QWidget* const focused = QApplication::focusWidget();
    return focused == nullptr ? "" : focused->objectName().toStdString();
  }
};

TEST_F(Keyboard, IsBackWhereItWasAfterADownload) {
  StartWithSet();
  Find<QListView>("ImpFileList").setFocus();
  PressKey(Qt::Key_D, Qt::ControlModifier);
  ASSERT_TRUE(Until([this] { return LabelText("InformationLabel") == "SUCCESS !"; }));
  EXPECT_EQ(Focused(), "CancelBtn");
  PressKey(Qt::Key_Escape);
  EXPECT_FALSE(Shown("DownloadFrame"));
  EXPECT_EQ(Focused(), "ImpFileList");
}

TEST_F(Keyboard, IsBackOnTheButtonThatTheDownloadWasStartedWith) {
  StartWithSet();
  Button("SendBtn").setFocus(Qt::TabFocusReason);
  PressKey(Qt::Key_Space);
  ASSERT_EQ(LabelText("InformationLabel"), "SUCCESS !");
  FrameButton().click();
  EXPECT_EQ(Focused(), "SendBtn");
}

TEST_F(Keyboard, IsBackWhereItWasWhenTheFrameWasClosedBeforeTheRunHadEnded) {
  StartWithSet("erase=2");
  Find<QListView>("ImpFileList").setFocus();
  dialogs.okAnswers = {false};
  WhenInformation("Erasing flash memory ...", [this] {
    FrameButton().click();
    FrameButton().click();
    ASSERT_FALSE(Shown("DownloadFrame"));
  });
  Button("SendBtn").click();
  ASSERT_TRUE(Shown("DownloadFrame")) << "it tells how the run has ended";
  FrameButton().click();
  EXPECT_EQ(Focused(), "ImpFileList");
}

TEST_F(Keyboard, IsBackWhereItWasAfterASetWasOpened) {
  StartWithSet();
  Find<QListView>("ImpFileList").setFocus();
  dialogs.filesToOpen = {Text(folder / "complete.lscfg")};
  PressKey(Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(Focused(), "ImpFileList");
}

TEST_F(Keyboard, EnterPressesTheFocusedButtonOfAPanel) {
  StartWithSet();
  Button("SendBtn").click();
  ASSERT_EQ(FrameButton().text(), "Close");
  ASSERT_EQ(Focused(), "CancelBtn");
  // Long enough for the result to be read.
  clock.Advance(std::chrono::seconds(2));
  PressKey(Qt::Key_Return);
  EXPECT_FALSE(Shown("DownloadFrame"));

  Button("ConfigBtn").click();
  Find<QPushButton>("CloseCfgBtn").setFocus();
  PressKey(Qt::Key_Enter);
  EXPECT_FALSE(Shown("ConfigFrame"));
}

TEST_F(Keyboard, EnterPressesTheFocusedButtonOfTheToolRowOnceHoweverLongItIsHeld) {
  StartWithSet();
  Button("SaveBtn").setFocus();
  // One question for a name, not three.
  dialogs.filesToSave = {QString()};
  PressKey(Qt::Key_Return);
  for (int i = 0; i < 2; ++i) {
    QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
    QApplication::sendEvent(&Button("SaveBtn"), &again);
  }
  EXPECT_TRUE(dialogs.filesToSave.empty());
}

TEST_F(Keyboard, ArrowDownOpensTheMenuOfTheRecentSets) {
  StartWithSet();
  ASSERT_GE(Button("LoadBtn").menu()->actions().size(), 2);
  Button("LoadBtn").setFocus();
  bool opened = false;
  When([this] { return Button("LoadBtn").menu()->isVisible(); },
       [&] {
         opened = true;
         QTest::keyClick(Button("LoadBtn").menu(), Qt::Key_Escape);
       });
  PressKey(Qt::Key_Down);
  EXPECT_TRUE(opened);
  EXPECT_TRUE(Button("LoadBtn").toolTip().contains("Arrow down: recent sets"));
}

TEST_F(Keyboard, StaysWhereItIsWhenAButtonOfTheToolRowIsClicked) {
  StartWithSet();
  Find<QListView>("ImpFileList").setFocus();
  dialogs.filesToSave = {QString()};
  QTest::mouseClick(&Button("SaveBtn"), Qt::LeftButton);
  EXPECT_TRUE(dialogs.filesToSave.empty());
  EXPECT_EQ(Focused(), "ImpFileList");
}

TEST_F(Keyboard, OpenIsNotLitAnyMoreWhenItsMenuIsGoneAndThePointerIsElsewhere) {
  StartWithSet();
  QToolButton& open = Button("LoadBtn");
  QCursor::setPos(window->mapToGlobal(QPoint(400, 400)));
  When([&open] { return open.menu()->isVisible(); },
       [&open] {
         // What window systems leave behind: the menu has the mouse, so that nobody tells the button of its leaving.
         open.setAttribute(Qt::WA_UnderMouse);
         QTest::keyClick(open.menu(), Qt::Key_Escape);
       });
  open.showMenu();
  EXPECT_TRUE(Until([&open] { return !open.underMouse(); }));
}

}  // namespace
}  // namespace kestrin::support
