// SPDX-License-Identifier: MIT
#include <QMouseEvent>
#include <QTest>
#include <QWindow>

#include "ui/window/HelpLine.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

class HelpLabel : public MainFixture {
 protected:
  void Enter(QWidget& control) {
    QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
    QApplication::sendEvent(&control, &enter);
  }
  void Leave(QWidget& control) {
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&control, &leave);
  }
  void MoveOn(QWidget& control) {
    QMouseEvent move(QEvent::MouseMove, {1, 1}, control.mapToGlobal(QPointF(1, 1)), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&control, &move);
  }
  [[nodiscard]] QString Help() const { return LabelText("HelpLabel"); }
};

struct HintRow {
  const char* control;
  const char* text;
};

constexpr const char* kPressF1 = "Press F1 for help";

constexpr HintRow kHintRows[] = {{"LoadBtn", "LOAD Configuration File"},
                                 {"SaveBtn", "SAVE Configuration File"},
                                 {"ConfigBtn", "CONFIGURE Hardware"},
                                 {"SendBtn", "DOWNLOAD Sound Files to Kestrin"},
                                 {"UpdateBtn", "UPDATE Sound Files (Requires Internet)"},
                                 {"btnUpdateLED", "Update LED Configuration"},
                                 {"btnSendFoc", "Apply and Test"},
                                 {"btnSendPulse", "Apply and Test"},
                                 {"Main", kPressF1},
                                 {"Frame1", kPressF1},
                                 {"FrameFoc", kPressF1},
                                 {"frmLED", kPressF1},
                                 {"HelpLabel", kPressF1},
                                 {"labelLED1", kPressF1},
                                 {"OnlinePicture", kPressF1},
                                 {"PickColor_frame", kPressF1}};

TEST_F(HelpLabel, SaysWhatTheControlUnderThePointerIsFor) {
  Start();
  for (const HintRow& row : kHintRows) {
    Enter(Find<QWidget>("SaveBtn"));
    QWidget& control = window->objectName() == row.control ? *window : Find<QWidget>(row.control);
    Enter(control);
    EXPECT_EQ(Help(), row.text) << row.control;
    Leave(control);
    EXPECT_EQ(Help(), kPressF1) << row.control;
  }
}

TEST_F(HelpLabel, SaysItAlsoOfButtonsThatCannotBeUsed) {
  StartOffline();
  Enter(Find<QWidget>("SendBtn"));
  EXPECT_EQ(Help(), "DOWNLOAD Sound Files to Kestrin");
}

TEST_F(HelpLabel, SaysItOfTheControlWithTheFocus) {
  Start();
  window->activateWindow();
  ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
  Button("SaveBtn").setFocus();
  EXPECT_EQ(Help(), "SAVE Configuration File");
  Button("SendBtn").setFocus();
  EXPECT_EQ(Help(), "DOWNLOAD Sound Files to Kestrin");
}

TEST_F(HelpLabel, KeepsNewsUntilAnotherControlHasSomethingToSay) {
  Start();
  auto& line = Find<ui::window::HelpLine>("HelpLabel");
  line.ShowNews("It rains.");
  EXPECT_EQ(Help(), "It rains.");
  Leave(Find<QWidget>("LoadBtn"));
  EXPECT_EQ(Help(), "It rains.");
  // To read it.
  Enter(line);
  MoveOn(line);
  EXPECT_EQ(Help(), "It rains.");
  // As a window is entered that comes up under the pointer: nobody has moved.
  QWidget& row = Find<QWidget>("ToolRow");
  const QPointF place(1, 1);
  QEnterEvent enter(place, place, row.mapToGlobal(place));
  QApplication::sendEvent(&row, &enter);
  MoveOn(row);
  EXPECT_EQ(Help(), "It rains.");
  Enter(Find<QWidget>("LoadBtn"));
  EXPECT_EQ(Help(), "LOAD Configuration File");
  Leave(Find<QWidget>("LoadBtn"));
  EXPECT_EQ(Help(), kPressF1);
}

TEST_F(HelpLabel, FallsBackOnTheWindowsGroundAlsoWhileNewsStand) {
  Start("id=4095");
  auto& line = Find<ui::window::HelpLine>("HelpLabel");
  for (const char* const ground : {"ToolRow", "Frame1", "FrameFoc", "frmLED", "OnlinePicture"}) {
    QWidget& control = Find<QWidget>(ground);
    line.ShowNews("It rains.");
    MoveOn(control);
    EXPECT_EQ(Help(), kPressF1) << ground;
    Leave(control);
    EXPECT_EQ(Help(), kPressF1) << ground;
  }
}

TEST_F(HelpLabel, FallsBackWhenThePointerLeavesAControlForTheGroundBesideIt) {
  Start();
  QWindow* const system = window->windowHandle();
  const QWidget& button = Find<QWidget>("SendBtn");
  const auto ground = [&](const QPoint& place) { return window->childAt(place) == &Find<QWidget>("ToolRow"); };
  QTest::mouseMove(system, button.mapTo(window.get(), button.rect().center()));
  Find<ui::window::HelpLine>("HelpLabel").ShowNews("It rains.");
  EXPECT_EQ(Help(), "It rains.");
  const QPoint corner = Find<QWidget>("ToolRow").mapTo(window.get(), QPoint(2, 2));
  ASSERT_TRUE(ground(corner));
  QTest::mouseMove(system, corner);
  EXPECT_TRUE(Until([this] { return Help() == kPressF1; })) << Help().toStdString();
}

}  // namespace
}  // namespace kestrin::support
