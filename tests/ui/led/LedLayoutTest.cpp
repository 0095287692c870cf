// SPDX-License-Identifier: MIT
// Whether the page fits into small windows.

#include <QScrollArea>
#include <QScrollBar>

#include "ui/kit/Theme.h"
#include "ui/led/LedPanelFixture.h"

namespace kestrin::support {
namespace {

class LedLayout : public LedPanelFixture {
 protected:
  void SetUp() override {
    ui::kit::Theme::Apply(*static_cast<QApplication*>(QCoreApplication::instance()), ui::kit::ColorScheme::Light);
    StartLed(40);
  }
  void Resize(int width, int height) const {
    window->resize(width, height);
    EXPECT_TRUE(Until([&] { return window->size() == QSize(width, height); }));
    QApplication::processEvents();
  }
  [[nodiscard]] QScrollArea& Page() const { return Find<QScrollArea>("LedPage"); }
  [[nodiscard]] QRect Place(const char* name) const {
    const auto& control = Find<QWidget>(name);
    return {control.mapTo(&Find<QWidget>("frmLED"), QPoint(0, 0)), control.size()};
  }
  /// What stands on the page has room and lies on nothing else.
  void ExpectRoomForAll() const {
    const auto& panel = Find<QWidget>("frmLED");
    const char* const cards[] = {"Frame1", "FrameIdle", "FrameFoc"};
    for (const char* const card : cards) {
      EXPECT_TRUE(panel.rect().contains(Place(card))) << card;
      for (const char* const other : cards)
        EXPECT_TRUE(card == other || !Place(card).intersects(Place(other))) << card << " " << other;
      for (const auto* const control : Find<QWidget>(card).findChildren<QWidget*>()) {
        if (!control->isVisible() || control->focusProxy() != nullptr) continue;
        const QSize least = control->minimumSizeHint();
        EXPECT_GE(control->width(), least.width()) << card << " " << control->objectName().toStdString();
        EXPECT_GE(control->height(), least.height()) << card << " " << control->objectName().toStdString();
      }
    }
  }
};

TEST_F(LedLayout, ASmallWindowScrollsNothingSideways) {
  Resize(800, 600);
  EXPECT_FALSE(Page().horizontalScrollBar()->isVisible());
  EXPECT_LE(Find<QWidget>("frmLED").width(), Page().viewport()->width());
  ExpectRoomForAll();
}

TEST_F(LedLayout, WhatDoesNotFitSideBySideStandsBelow) {
  // In another language.
  for (const char* const card : {"Frame1", "FrameIdle"})
    for (auto* const label : Find<QWidget>(card).findChildren<QLabel*>())
      if (label->buddy() != nullptr) label->setText("what this control is there for");
  Find<QPushButton>("btnUpdateLED").setText("write type and overdrive to the board");
  Resize(800, 600);
  ASSERT_GT(Find<QWidget>("FrameIdle").minimumSizeHint().width(), 400);
  EXPECT_FALSE(Page().horizontalScrollBar()->isVisible());
  ASSERT_TRUE(Page().verticalScrollBar()->isVisible());
  EXPECT_GT(Place("OverdriveSlider").top(), Place("LEDcombo").bottom());
  EXPECT_GT(Place("FrameFoc").top(), Place("FrameIdle").bottom());
  EXPECT_EQ(Place("FrameFoc").left(), Place("FrameIdle").left());
  EXPECT_EQ(Place("FrameFoc").width(), Place("FrameIdle").width());
  ExpectRoomForAll();
  for (const int scrolled : {0, Page().verticalScrollBar()->maximum()}) {
    Page().verticalScrollBar()->setValue(scrolled);
    Click("btnPulseLow");
    const auto& picker = Find<QWidget>("PickColor_frame");
    const QRect shown(picker.mapTo(Page().viewport(), QPoint(0, 0)), picker.size());
    EXPECT_TRUE(Page().viewport()->rect().contains(shown)) << "scrolled by " << scrolled;
    Click("PickColorCancel");
  }
}

TEST_F(LedLayout, AnOrdinaryWindowHasThemSideBySideAndNoScrollingAtAll) {
  for (const QSize size : {QSize(960, 640), QSize(1400, 900)}) {
    Resize(size.width(), size.height());
    EXPECT_FALSE(Page().horizontalScrollBar()->isVisible());
    EXPECT_FALSE(Page().verticalScrollBar()->isVisible());
    EXPECT_EQ(Place("FrameFoc").top(), Place("FrameIdle").top());
    EXPECT_EQ(Place("FrameFoc").height(), Place("FrameIdle").height());
    EXPECT_GT(Place("FrameFoc").left(), Place("FrameIdle").right());
    EXPECT_LT(Place("OverdriveSlider").top(), Place("LEDcombo").bottom()) << "all in one row";
    ExpectRoomForAll();
  }
}

TEST_F(LedLayout, ComesBackWhenTheWindowIsMadeLargerAgain) {
  Resize(960, 640);
  const QRect before = Place("FrameFoc");
  Resize(800, 600);
  ASSERT_NE(Place("FrameFoc"), before);
  Resize(960, 640);
  EXPECT_EQ(Place("FrameFoc"), before);
}

}  // namespace
}  // namespace kestrin::support
