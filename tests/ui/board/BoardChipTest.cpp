// SPDX-License-Identifier: MIT
#include "ui/board/BoardChip.h"

#include <gtest/gtest.h>

#include <QMenu>
#include <QSignalSpy>
#include <QTest>

namespace kestrin::ui::board {
namespace {

TEST(BoardChip, SaysWhatIsOnTheBoardAndAllOfItToWhoAsks) {
  BoardChip chip;
  chip.Show(BoardChip::State::Differs, "This set, but Idle and Motion 2 differ", 1,
            "This set, but Idle, Motion 2 and Motion 3 differ");
  EXPECT_EQ(chip.Words(), "Board: This set, but Idle and Motion 2 differ +1");
  EXPECT_EQ(chip.accessibleName(), "Board: This set, but Idle, Motion 2 and Motion 3 differ");
  EXPECT_EQ(chip.toolTip(), "Board: This set, but Idle, Motion 2 and Motion 3 differ");
  chip.Show(BoardChip::State::Same, "This set", 0, "This set");
  EXPECT_EQ(chip.Words(), "Board: This set");
  EXPECT_EQ(chip.Shown(), BoardChip::State::Same);
}

TEST(BoardChip, StaysNarrowWithManyWords) {
  BoardChip chip;
  chip.Show(BoardChip::State::Other, QString(300, 'w'), 0, "w");
  EXPECT_LE(chip.sizeHint().width(), 400);
  EXPECT_LE(chip.minimumSizeHint().width(), 120);
}

TEST(BoardChip, OpensByMouseAndKeyboardAndItsMenuByTheArrow) {
  BoardChip chip;
  QMenu menu;
  menu.addAction("Compare");
  chip.setMenu(&menu);
  chip.Show(BoardChip::State::Same, "This set", 0, "This set");
  chip.resize(chip.sizeHint());
  chip.show();
  QSignalSpy opened(&chip, &QToolButton::clicked);
  QTest::mouseClick(&chip, Qt::LeftButton, {}, {20, 12});
  EXPECT_EQ(opened.count(), 1);
  QTest::keyClick(&chip, Qt::Key_Space);
  EXPECT_EQ(opened.count(), 2);
  int shown = 0;
  QObject::connect(&menu, &QMenu::aboutToShow, &menu, [&] {
    ++shown;
    QMetaObject::invokeMethod(&menu, "close", Qt::QueuedConnection);
  });
  QTest::keyClick(&chip, Qt::Key_Down);
  EXPECT_EQ(shown, 1);
  QTest::mouseClick(&chip, Qt::LeftButton, {}, {chip.width() - 8, 12});
  EXPECT_EQ(shown, 2);
  EXPECT_EQ(opened.count(), 2);
}

}  // namespace
}  // namespace kestrin::ui::board
