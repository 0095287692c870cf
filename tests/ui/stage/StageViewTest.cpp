// SPDX-License-Identifier: MIT
#include "ui/stage/StageView.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::stage {
namespace {

constexpr QSize kSize(920, 378);

int LightOf(QRgb color) { return qRed(color) + qGreen(color) + qBlue(color); }

class StageViewTest : public testing::Test {
 protected:
  StageViewTest() {
    view.resize(kSize);
    picture.degrees = picture.trail = 16;
    picture.shine.hue = QColor(255, 0, 0);
    picture.shine.extent = 1;
  }
  QImage Grab() {
    view.Show(picture);
    return view.grab().toImage();
  }
  [[nodiscard]] SaberPlace Place() const { return {QSizeF(kSize), picture.degrees}; }
  /// The point at that distance from the blade's middle, above the point of that share of it.
  [[nodiscard]] QPoint Above(double share, double distance) const {
    const double angle = (picture.degrees + 90) * std::numbers::pi / 180;
    return (Place().Along(share) + distance * QPointF(std::cos(angle), -std::sin(angle))).toPoint();
  }

  StageView view;
  StagePicture picture;
};

TEST_F(StageViewTest, ShowsAWhiteCoreInAColouredGlow) {
  const QImage image = Grab();
  for (const double share : {0.1, 0.5, 0.9}) {
    const QRgb core = image.pixel(Above(share, 0));
    EXPECT_GT(qGreen(core), 220) << share;
    EXPECT_GT(qBlue(core), 220) << share;
    const QRgb rim = image.pixel(Above(share, 13));
    EXPECT_GT(qRed(rim), 120) << share;
    EXPECT_GT(qRed(rim), 2 * qGreen(rim)) << share;
    // It falls off without a step up.
    int last = LightOf(rim);
    for (double distance = 18; distance < 90; distance += 8) {
      const int light = LightOf(image.pixel(Above(share, distance)));
      EXPECT_LE(light, last + 12) << share << " at " << distance;
      last = light;
    }
    EXPECT_GT(LightOf(rim), last + 100);
  }
}

TEST_F(StageViewTest, IsAsLongAsItIsOut) {
  picture.shine.extent = 0.5;
  const QImage half = Grab();
  EXPECT_GT(qGreen(half.pixel(Above(0.4, 0))), 220);
  EXPECT_LT(LightOf(half.pixel(Above(0.75, 0))), 200);
  picture.shine.extent = 0;
  const QImage in = Grab();
  for (const double share : {0.1, 0.5, 0.9}) EXPECT_LT(LightOf(in.pixel(Above(share, 0))), 120) << share;
  // The hilt is there all the same.
  const QPointF grip = Place().Hand();
  EXPECT_GT(LightOf(in.pixel((grip + QPointF(0, -5)).toPoint())), LightOf(in.pixel(Above(0.5, 0))));
}

TEST_F(StageViewTest, IsGoneWhereItWas) {
  static_cast<void>(Grab());
  const QPoint before = Above(0.6, 0);
  picture.degrees = picture.trail = 45;
  const QImage after = Grab();
  EXPECT_LT(LightOf(after.pixel(before)), 150);
  EXPECT_GT(qGreen(after.pixel(Above(0.5, 0))), 220);
}

TEST_F(StageViewTest, PaintsNothingTwiceThatHasNotChanged) {
  view.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
  picture.shine.extent = 0;
  view.Show(picture);
  QApplication::processEvents();
  struct Count : QObject {
    int paints = 0;
    QRegion painted;
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() != QEvent::Paint) return false;
      ++paints;
      painted = static_cast<QPaintEvent*>(event)->region();
      return false;
    }
  } count;
  view.installEventFilter(&count);
  for (int i = 0; i < 5; ++i) {
    view.Show(picture);
    QApplication::processEvents();
  }
  EXPECT_EQ(count.paints, 0);
  picture.line = "Blade in";
  view.Show(picture);
  QApplication::processEvents();
  EXPECT_EQ(count.paints, 1);
  EXPECT_FALSE(count.painted.contains(QPoint(460, 300))) << "that is far below the line";
  // A blade that moves is painted where it was and where it is, with its light on the floor.
  picture.shine.extent = 1;
  view.Show(picture);
  QApplication::processEvents();
  const QPoint before = Above(0.9, 0);
  picture.degrees = picture.trail = 40;
  view.Show(picture);
  QApplication::processEvents();
  EXPECT_TRUE(count.painted.contains(before));
  EXPECT_TRUE(count.painted.contains(Above(0.5, 0)));
  EXPECT_TRUE(count.painted.contains(QPoint(460, 375)));
}

TEST_F(StageViewTest, NoTextIsCutOffOnALowAndNarrowStage) {
  view.resize(360, 200);
  picture.shine.extent = 0;
  const QString text = "What is said here goes on for longer than a stage like this one is wide, to the very";
  for (QString StagePicture::*const place : {&StagePicture::line, &StagePicture::warning, &StagePicture::hint}) {
    picture.line = picture.warning = picture.hint = "x";
    picture.*place = text;
    const QImage without = Grab();
    picture.*place = text + " end.";
    EXPECT_NE(Grab(), without) << "the last word cannot be seen";
  }
}

TEST_F(StageViewTest, TheNameOfTheSetStandsBesideWhatSounds) {
  picture.shine.extent = 0;
  for (const QSize& size : {QSize(440, 230), kSize, QSize(2400, 1000)}) {
    view.resize(size);
    picture.name.clear();
    picture.chips.clear();
    const QImage nothing = Grab();
    picture.name = QString(300, 'M');
    const QImage named = Grab();
    picture.name.clear();
    picture.chips = {{core::sound::SlotKind::Idle, QString(300, 'm') + ".lsu"},
                     {core::sound::SlotKind::Motion, QString(300, 'w') + ".lsu"}};
    const QImage sounding = Grab();
    int last = 0;
    int first = size.width();
    for (int x = 0; x < size.width(); ++x)
      for (int y = 0; y < 60; ++y) {
        if (named.pixel(x, y) != nothing.pixel(x, y)) last = x;
        if (sounding.pixel(x, y) != nothing.pixel(x, y)) first = std::min(first, x);
      }
    EXPECT_GT(last, size.width() / 6) << "there is room for a name";
    EXPECT_LT(last, first) << size.width();
    picture.chips.clear();
  }
}

TEST_F(StageViewTest, KeepsTheBladeOnAStageOfAnySize) {
  for (const QSize size : {QSize(320, 120), QSize(600, 220), QSize(900, 900), QSize(3000, 700)}) {
    const SaberPlace place{QSizeF(size), 16};
    EXPECT_TRUE(QRectF(QPointF(), QSizeF(size)).contains(place.Along(1))) << size.width();
    EXPECT_TRUE(QRectF(QPointF(), QSizeF(size)).contains(place.Mouth())) << size.width();
    EXPECT_GT(place.Length(), size.width() / 5.0) << size.width();
  }
}

TEST_F(StageViewTest, PointsToThePointer) {
  const SaberPlace place{QSizeF(kSize), 30};
  EXPECT_NEAR(SaberPlace::DegreesTowards(QSizeF(kSize), place.Along(0.8)), 30, 0.01);
  EXPECT_EQ(SaberPlace::DegreesTowards(QSizeF(kSize), QPointF(0, 0)), 62);
  EXPECT_EQ(SaberPlace::DegreesTowards(QSizeF(kSize), QPointF(900, 1000)), -6);
}

TEST_F(StageViewTest, TellsWhatThePointerDoes) {
  view.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
  double led = 0;
  int pressed = 0;
  int released = 0;
  QObject::connect(&view, &StageView::led, [&](double degrees) { led = degrees; });
  QObject::connect(&view, &StageView::pressed, [&] { ++pressed; });
  QObject::connect(&view, &StageView::released, [&] { ++released; });
  QTest::mouseMove(&view, SaberPlace(QSizeF(kSize), 40).Along(0.5).toPoint());
  EXPECT_NEAR(led, 40, 0.3);
  QTest::mousePress(&view, Qt::LeftButton, {}, QPoint(400, 100));
  EXPECT_EQ(pressed, 1);
  EXPECT_EQ(released, 0);
  QTest::mouseRelease(&view, Qt::LeftButton, {}, QPoint(400, 100));
  EXPECT_EQ(released, 1);
  QTest::mousePress(&view, Qt::RightButton, {}, QPoint(400, 100));
  EXPECT_EQ(pressed, 1);
}

TEST_F(StageViewTest, IsDarkInEveryScheme) {
  picture.shine.extent = 0;
  for (const bool isDark : {true, false}) {
    view.setPalette(kit::PaletteOf({.isDark = isDark}));
    const QImage image = Grab();
    EXPECT_LT(LightOf(image.pixel(460, 60)), 150) << isDark;
    EXPECT_EQ(image.pixelColor(0, 0).rgb(), view.palette().color(QPalette::Window).rgb()) << "its corners are round";
  }
  view.setPalette(kit::PaletteOf({.isDark = true, .isHighContrast = true}));
  EXPECT_EQ(LightOf(Grab().pixel(460, 60)), 0);
}

}  // namespace
}  // namespace kestrin::ui::stage
