// SPDX-License-Identifier: MIT
// How the connection doctor is reached in the window.

#include <QMenu>
#include <QTest>
#include <filesystem>
#include <memory>

#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

class DoctorInMain : public MainFixture {
 protected:
  void Activate() {
    window->activateWindow();
    ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
  }
  QPushButton& Why() { return Find<QPushButton>("WhyLink"); }
  QAction& Connection() { return Find<QAction>("ConnectionAction"); }
};

TEST_F(DoctorInMain, WhyStandsBesideNoBoardAsLongAsThereIsNone) {
  StartOffline();
  EXPECT_TRUE(Shown("WhyLink"));
  EXPECT_EQ(Why().text(), "Why?");
  const auto& label = Find<QLabel>("NoBoardLabel");
  EXPECT_EQ(Why().geometry().left(), label.geometry().right() + 1 + 4) << "close beside the text";
  agent->Plug();
  Tick("NoticeTimer");
  Tick("GoOnlineTimer");
  EXPECT_FALSE(Shown("WhyLink"));
  agent->Unplug();
  Tick("NoticeTimer");
  EXPECT_TRUE(Shown("WhyLink"));
}

TEST_F(DoctorInMain, WhyCanBeReadInTheSmallestWindowAlsoBesideTheLedDriversPage) {
  for (const char* const board : {"", "id=512"}) {
    Make(board);
    ASSERT_TRUE(window->StartUp());
    Show();
    window->resize(960, 640);
    agent->Unplug();
    Tick("NoticeTimer");
    QApplication::processEvents();
    ASSERT_EQ(window->size(), QSize(960, 640));
    const auto& noBoard = Find<QLabel>("NoBoardLabel");
    EXPECT_GE(noBoard.width(), noBoard.fontMetrics().horizontalAdvance(noBoard.text())) << "it stands in one line";
    for (const char* const name : {"WhyLink", "HelpBtn", "ViewBtn"}) {
      const QWidget& widget = Find<QWidget>(name);
      EXPECT_TRUE(widget.isVisible()) << name;
      EXPECT_GE(widget.width(), widget.sizeHint().width()) << name;
      EXPECT_TRUE(window->rect().contains(QRect(widget.mapTo(window.get(), QPoint(0, 0)), widget.size()))) << name;
    }
    window.reset();
  }
}

TEST_F(DoctorInMain, WhyStandsBesideABoardThatCannotBeUsedYet) {
  const std::filesystem::path board = folder / "board";
  std::filesystem::create_directories(board);
  const std::unique_ptr<core::base::Disk::Lock> other = disk.TryLock(board / "board.lock").lock;
  Make("dir=" + board.string());
  dialogs.okAnswers = {true};
  ASSERT_TRUE(window->StartUp());
  Show();
  for (const QSize size : {QSize(800, 600), QSize(960, 640)}) {
    window->resize(size);
    QApplication::processEvents();
    const auto& label = Find<QLabel>("NoBoardLabel");
    ASSERT_EQ(label.text(), "Board found, not usable yet");
    EXPECT_GE(label.height(), label.heightForWidth(label.width())) << size.width();
    EXPECT_GE(Why().width(), Why().sizeHint().width());
    for (const QWidget* const widget : {static_cast<const QWidget*>(&label), static_cast<const QWidget*>(&Why())})
      EXPECT_TRUE(window->rect().contains(QRect(widget->mapTo(window.get(), QPoint(0, 0)), widget->size())));
  }
}

TEST_F(DoctorInMain, WhyIsPressedByMouseAndKeyboard) {
  StartOffline();
  Activate();
  QTest::mouseClick(&Why(), Qt::LeftButton);
  EXPECT_TRUE(Shown("DoctorFrame"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(Shown("DoctorFrame"));
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
    Why().setFocus(Qt::TabFocusReason);
    QTest::keyClick(&Why(), key);
    EXPECT_TRUE(Shown("DoctorFrame")) << key;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), &Why()) << "the keyboard is back where it was";
  }
}

TEST_F(DoctorInMain, WhyIsReachedByTabAndShowsThatItHasTheKeyboard) {
  StartOffline();
  Activate();
  EXPECT_NE(Why().focusPolicy() & Qt::TabFocus, 0);
  EXPECT_EQ(Why().accessibleName(), "Why is no board connected?");
  const QImage before = Why().grab().toImage();
  Why().setFocus(Qt::TabFocusReason);
  EXPECT_NE(Why().grab().toImage(), before);
}

TEST_F(DoctorInMain, HelpOffersItAlsoWithABoard) {
  Start();
  EXPECT_FALSE(Shown("WhyLink"));
  QMenu* const menu = Button("HelpBtn").menu();
  ASSERT_NE(menu, nullptr);
  ASSERT_EQ(menu->actions().size(), 3);
  EXPECT_EQ(menu->actions()[0]->text(), "&Help\tF1");
  EXPECT_EQ(menu->actions()[1]->text(), "&Connection ...");
  EXPECT_EQ(menu->actions()[2]->text(), "&About Kestrin Launcher ...");
  menu->actions()[1]->trigger();
  EXPECT_TRUE(Shown("DoctorFrame"));
  EXPECT_FALSE(Button("SendBtn").isEnabled()) << "it lies over the window";
}

TEST_F(DoctorInMain, HelpOpensTheHelp) {
  Start();
  std::vector<ui::kit::HelpContext> topics;
  QObject::connect(window.get(), &ui::window::Main::helpRequested,
                   [&](ui::kit::HelpContext topic) { topics.push_back(topic); });
  Find<QAction>("HelpAction").trigger();
  EXPECT_EQ(topics, std::vector<ui::kit::HelpContext>{ui::kit::HelpContext::Overview});
}

TEST_F(DoctorInMain, CannotBeOpenedDuringADownload) {
  Start();
  window->OpenSet(CompleteSet());
  bool tried = false;
  WhenInformation("Downloading...", [this, &tried] {
    tried = true;
    EXPECT_FALSE(Connection().isEnabled());
    EXPECT_EQ(Connection().toolTip(), "Please wait until this is done.");
    EXPECT_FALSE(Why().isEnabled());
    emit Find<ui::window::ToolRow>("ToolRow").whyPressed();
    EXPECT_FALSE(Shown("DoctorFrame"));
  });
  Button("SendBtn").click();
  EXPECT_TRUE(tried);
  EXPECT_TRUE(Connection().isEnabled());
  EXPECT_EQ(doctor.interviews, 0);
}

TEST_F(DoctorInMain, IsNotOfferedWhereNobodyCanLook) {
  Make("", false);
  window = std::make_unique<ui::window::Main>(ui::window::Surroundings{
      *agent, gate, clock, disk, dialogs, player, folders, kept, sleep, &update, settings, program, {program, data}});
  dialogs.okAnswers = {true};
  ASSERT_TRUE(window->StartUp());
  Show();
  EXPECT_TRUE(Shown("NoBoardLabel"));
  EXPECT_FALSE(Shown("WhyLink"));
  EXPECT_FALSE(Connection().isVisible());
}

}  // namespace
}  // namespace kestrin::support
