// SPDX-License-Identifier: MIT
#include "ui/stage/Timeline.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QTest>
#include <vector>

#include "ui/kit/ThemeColors.h"
#include "ui/stage/StagePlaces.h"

namespace kestrin::ui::stage {
namespace {

using core::sound::SlotKind;
using core::sound::SoundPlace;

constexpr std::int64_t kSecond = 48000;

class TimelineTest : public testing::Test {
 protected:
  TimelineTest() {
    QPalette palette = kit::PaletteOf({.isDark = true});
    // The ground of whatever it stands on, which its own rows stand out from.
    palette.setColor(QPalette::Window, QColor(60, 0, 60));
    line.setPalette(palette);
    line.resize(700, 160);
    QObject::connect(&line, &Timeline::chosen, [this](const SoundPlace& place) { chosen.push_back(place); });
    // A hum of two seconds that has gone on for six, and a swing of one second, three seconds ago.
    pieces.Begin(kHum, "idle", 6 * kSecond, 2 * kSecond);
    pieces.Begin(kSwing, "swing3", 9 * kSecond, kSecond);
    pieces.End(kSwing, 10 * kSecond);
    pieces.Advance(12 * kSecond);
    line.Refresh();
    line.show();
  }
  /// Where that moment is in the row of the slot, from above.
  [[nodiscard]] QPoint At(double secondsAgo, int row) {
    // The right end is now, the left one twelve seconds ago. A row is a seventh of what the axis leaves.
    const QImage image = line.grab().toImage();
    const double high = (line.height() - line.fontMetrics().height()) / 7.0;
    const int middle = static_cast<int>((row + 0.5) * high);
    const int first = FirstOfGround(image);
    const double width = line.width() - 2 - first;
    return {static_cast<int>(line.width() - 2 - secondsAgo / 12 * width), middle};
  }
  /// Where the rows begin behind their names: row 1 has no piece at all.
  [[nodiscard]] int FirstOfGround(const QImage& image) const {
    const QRgb ground = kit::ColorOf(kit::ColorRole::Background, line.palette()).rgb();
    for (int x = 0; x < image.width(); ++x)
      if (image.pixel(x, 30) == ground) return x;
    return -1;
  }

  PlayedPieces pieces;
  Timeline line{pieces};
  std::vector<SoundPlace> chosen;
};

TEST_F(TimelineTest, APieceThatIsClickedIsChosen) {
  QTest::mouseClick(&line, Qt::LeftButton, {}, At(2.5, 4));
  ASSERT_EQ(chosen.size(), 1U);
  EXPECT_EQ(chosen[0], kSwing);
  QTest::mouseClick(&line, Qt::LeftButton, {}, At(5.5, 3));
  ASSERT_EQ(chosen.size(), 2U);
  EXPECT_EQ(chosen[1], kHum);
  QTest::mouseClick(&line, Qt::LeftButton, {}, At(1, 4));
  QTest::mouseClick(&line, Qt::LeftButton, {}, At(7, 3));
  QTest::mouseClick(&line, Qt::RightButton, {}, At(2.5, 4));
  EXPECT_EQ(chosen.size(), 2U);
}

TEST_F(TimelineTest, MarksTheTurnsOfTheHum) {
  const QImage image = line.grab().toImage();
  const QRgb mark = kit::SlotColor(SlotKind::Idle, line.palette()).rgb();
  const auto nearMark = [&](double secondsAgo) {
    const QPoint at = At(secondsAgo, 3);
    for (int x = at.x() - 2; x <= at.x() + 2; ++x)
      if (image.pixelColor(x, at.y() + 4).green() > QColor(mark).green() - 70) return true;
    return false;
  };
  EXPECT_TRUE(nearMark(4));
  EXPECT_TRUE(nearMark(2));
  EXPECT_FALSE(nearMark(3));
  EXPECT_FALSE(nearMark(1));
}

TEST_F(TimelineTest, IsUsedByKeysAndTellsWhichPieceIsChosen) {
  line.setFocus();
  QTest::keyClick(&line, Qt::Key_Right);
  EXPECT_EQ(line.accessibleDescription(), "Motion 3: swing3, 3.0 s ago. Enter plays it again.");
  QTest::keyClick(&line, Qt::Key_Left);
  EXPECT_EQ(line.accessibleDescription(), "Idle: idle, 6.0 s ago. Enter plays it again.");
  QTest::keyClick(&line, Qt::Key_Left);
  QTest::keyClick(&line, Qt::Key_Return);
  ASSERT_EQ(chosen.size(), 1U);
  EXPECT_EQ(chosen[0], kHum);
}

TEST_F(TimelineTest, AChosenPieceStaysChosenWhenAnOlderOneIsForgotten) {
  const SoundPlace clash{SlotKind::Impact, 1};
  pieces.Begin(clash, "clash", 11 * kSecond, kSecond);
  pieces.End(clash, 12 * kSecond);
  line.Refresh();
  QTest::keyClick(&line, Qt::Key_Right);
  ASSERT_EQ(line.accessibleDescription(), "Impact 1: clash, 1.0 s ago. Enter plays it again.");
  // The swing was over after ten seconds: it goes, the clash stays.
  pieces.Advance(23 * kSecond);
  line.Refresh();
  ASSERT_EQ(pieces.All().size(), 2U);
  QTest::keyClick(&line, Qt::Key_Return);
  EXPECT_EQ(chosen, std::vector{clash});
}

TEST_F(TimelineTest, WhatComesInPlaceOfAForgottenPieceIsNotChosen) {
  const SoundPlace clash{SlotKind::Impact, 1};
  QTest::keyClick(&line, Qt::Key_Right);
  ASSERT_EQ(line.accessibleDescription(), "Motion 3: swing3, 3.0 s ago. Enter plays it again.");
  pieces.Begin(clash, "clash", 11 * kSecond, kSecond);
  pieces.End(clash, 12 * kSecond);
  pieces.Advance(23 * kSecond);
  line.Refresh();
  ASSERT_EQ(pieces.All()[1].place, clash);
  QTest::keyClick(&line, Qt::Key_Return);
  EXPECT_TRUE(chosen.empty());
}

TEST_F(TimelineTest, ForgetsAChosenPieceThatIsGone) {
  line.setFocus();
  QTest::keyClick(&line, Qt::Key_Right);
  pieces.Advance(23 * kSecond);
  line.Refresh();
  ASSERT_EQ(pieces.All().size(), 1U);
  QTest::keyClick(&line, Qt::Key_Return);
  EXPECT_TRUE(chosen.empty());
  pieces.Clear();
  line.Refresh();
  QTest::keyClick(&line, Qt::Key_Left);
  QTest::keyClick(&line, Qt::Key_Return);
  QTest::mouseClick(&line, Qt::LeftButton, {}, QPoint(400, 70));
  EXPECT_TRUE(chosen.empty());
}

}  // namespace
}  // namespace kestrin::ui::stage
