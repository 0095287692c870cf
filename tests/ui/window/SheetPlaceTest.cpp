// SPDX-License-Identifier: MIT
// Sheets stand between the row of tools and the line of help.

#include <QTest>
#include <QVBoxLayout>

#include "ui/kit/Overlay.h"
#include "ui/window/MainFixture.h"
#include "ui/window/Pages.h"

namespace kestrin::support {
namespace {

/// Where the widget is in its window.
QRect PlaceIn(const QWidget& widget, const QWidget& window) { return {widget.mapTo(&window, QPoint()), widget.size()}; }

/// A sheet of that height, which may have less where it scrolls.
class Panel : public QWidget {
 public:
  using QWidget::QWidget;
  int wanted = 0;
  int least = 0;
  [[nodiscard]] QSize sizeHint() const override { return {200, wanted}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {200, least}; }
};

/// A window of three parts, 50 pixels above and 30 below the middle.
class SheetPlace : public testing::Test {
 protected:
  SheetPlace() {
    auto* const column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    top->setFixedHeight(50);
    bottom->setFixedHeight(30);
    column->addWidget(top);
    column->addWidget(middle, 1);
    column->addWidget(bottom);
    panel->hide();
    overlay = new ui::kit::Overlay(*panel, window, middle);
  }
  static void Settle() {
    for (int round = 0; round < 3; ++round) QApplication::processEvents();
  }
  /// Opens the panel in a window of 480 pixels, of which the middle has those from 50 to 450.
  QRect Open(int wanted, int least, QSizePolicy::Policy policy = QSizePolicy::Preferred) {
    window.resize(600, 480);
    window.show();
    Settle();
    panel->wanted = wanted;
    panel->least = least;
    panel->setSizePolicy(QSizePolicy::Preferred, policy);
    panel->show();
    Settle();
    return PlaceIn(*panel, window);
  }

  QWidget window;
  QWidget* top = new QWidget(&window);
  QWidget* middle = new QWidget(&window);
  QWidget* bottom = new QWidget(&window);
  Panel* panel = new Panel(&window);
  ui::kit::Overlay* overlay = nullptr;
};

TEST_F(SheetPlace, StandsInTheMiddleAndDimsEverything) {
  const QRect place = Open(100, 100);
  EXPECT_EQ(place.top(), 200);
  EXPECT_EQ(place.height(), 100);
  EXPECT_EQ(overlay->geometry(), window.rect());
}

TEST_F(SheetPlace, KeepsAGapFromWhatIsAboveAndBelow) {
  // 400 pixels of middle, 8 off at both ends.
  const QRect place = Open(384, 100);
  EXPECT_EQ(place.top(), 58);
  EXPECT_EQ(place.bottom() + 1, 442);
}

TEST_F(SheetPlace, ReachesUpwardsFirstWhenItIsTaller) {
  const QRect place = Open(404, 100);
  EXPECT_EQ(place.top(), 38);
  EXPECT_EQ(place.bottom() + 1, 442);
}

TEST_F(SheetPlace, TakesTheWholeWindowWhenItIsMuchTaller) {
  const QRect place = Open(464, 100);
  EXPECT_EQ(place.top(), 8);
  EXPECT_EQ(place.bottom() + 1, 472);
}

TEST_F(SheetPlace, ScrollsRatherThanThatItReachesOut) {
  const QRect place = Open(1000, 300, QSizePolicy::Expanding);
  EXPECT_EQ(place.top(), 58);
  EXPECT_EQ(place.bottom() + 1, 442);
}

TEST_F(SheetPlace, ReachesOutWhenItsLeastDoesNotFit) {
  const QRect place = Open(1000, 394, QSizePolicy::Expanding);
  EXPECT_EQ(place.top(), 48);
  EXPECT_EQ(place.bottom() + 1, 442);
}

TEST_F(SheetPlace, FollowsTheWindow) {
  ASSERT_EQ(Open(100, 100).top(), 200);
  window.resize(600, 680);
  Settle();
  // The middle reaches from 50 to 650.
  EXPECT_EQ(PlaceIn(*panel, window).top(), 300);
}

TEST_F(SheetPlace, FollowsThePanel) {
  ASSERT_EQ(Open(100, 100).top(), 200);
  panel->wanted = 404;
  panel->updateGeometry();
  Settle();
  EXPECT_EQ(PlaceIn(*panel, window).top(), 38);
}

class SheetsOfTheWindow : public MainFixture {};

TEST_F(SheetsOfTheWindow, LeaveToolsAndHelpToBeSeen) {
  Start();
  window->resize(1280, 800);
  Button("ConfigBtn").click();
  for (int round = 0; round < 3; ++round) QApplication::processEvents();
  const QRect sheet = PlaceIn(Find<QWidget>("ConfigFrame"), *window);
  EXPECT_GT(sheet.top(), PlaceIn(Find<QWidget>("SendBtn"), *window).bottom());
  EXPECT_LT(sheet.bottom(), PlaceIn(Find<QWidget>("HelpLabel"), *window).top());
}

}  // namespace
}  // namespace kestrin::support
