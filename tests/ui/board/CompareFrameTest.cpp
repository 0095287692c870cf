// SPDX-License-Identifier: MIT
#include "ui/board/CompareFrame.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>

#include "ui/board/CompareTable.h"
#include "ui/kit/Pictures.h"

namespace kestrin::ui::board {
namespace {

using core::sound::ComparedPlace;
using core::sound::ComparedPlaces;
using core::sound::ComparedSound;
using core::sound::Differs;
using core::sound::SlotKind;

/// Four places: the same, another volume, another sound that nobody knows, and one that is only here.
class CompareFrameTest : public ::testing::Test {
 protected:
  CompareFrameTest() {
    QObject::connect(&frame, &CompareFrame::takeOverWanted, [this](const ComparedPlace& place) { taken = place; });
    QObject::connect(&frame, &CompareFrame::playWanted, [this](const ComparedSound& sound) { played = sound; });
    QObject::connect(&frame, &CompareFrame::stopWanted, [this] { ++stops; });
    frame.Show(sides, places);
    frame.resize(frame.sizeHint());
    frame.Open();
  }

  [[nodiscard]] QString Text(const char* name) { return frame.findChild<QLabel*>(name)->text(); }
  /// The rows that are shown, as "Boot: boot.lsu 70 % 2.2 s / Same / boot.lsu 70 % 2.2 s".
  [[nodiscard]] QStringList Rows() {
    QStringList lines;
    for (const CompareRow* const row : VisibleRows()) {
      QStringList words;
      QList<QLabel*> labels = row->findChildren<QLabel*>();
      std::ranges::sort(labels, {}, [row](const QLabel* label) { return label->mapTo(row, QPoint()).x(); });
      for (const QLabel* const label : labels) words.append(label->text());
      lines.append(words.join(" / "));
    }
    return lines;
  }
  [[nodiscard]] QList<CompareRow*> VisibleRows() {
    QList<CompareRow*> rows;
    for (CompareRow* const row : frame.findChildren<CompareRow*>())
      if (!row->isHidden()) rows.append(row);
    return rows;
  }
  [[nodiscard]] QAbstractButton& Press(int row, CompareRow::Part part) {
    auto& button = *static_cast<QAbstractButton*>(VisibleRows().at(row)->Button(part));
    button.click();
    return button;
  }

  kit::Pictures pictures{KESTRIN_PICTURES};
  CompareFrame frame{pictures};
  CompareFrame::Sides sides{"This set and the board",
                            "Ember knight",
                            "On the board",
                            "read just now",
                            {"on the board", "not on the board", "not in this set"},
                            "advice",
                            true};
  ComparedPlaces places = {
      {{SlotKind::Boot, 1}, ComparedSound{"/a/boot.lsu", 70, 105600}, ComparedSound{"/a/boot.lsu", 70, 105600}, {}},
      {{SlotKind::Idle, 1}, ComparedSound{"/a/idle.lsu", 55, 144000}, ComparedSound{{}, {}, 196800}, Differs::Sound},
      {{SlotKind::Motion, 2},
       ComparedSound{"/a/swing2.lsu", 80, 43200},
       ComparedSound{"/a/swing2.lsu", 60, 43200},
       Differs::Volume},
      {{SlotKind::Lockup, 2}, ComparedSound{"/a/lock.lsu", 75, 96000}, {}, Differs::OnlyInFirst}};
  std::optional<ComparedPlace> taken;
  std::optional<ComparedSound> played;
  int stops = 0;
};

TEST_F(CompareFrameTest, EveryPlaceIsARow) {
  EXPECT_EQ(Text("CompareCaption"), "This set and the board");
  EXPECT_EQ(Text("CompareSummary"), "1 sound is the same, 2 differ, 1 is only here.");
  EXPECT_EQ(Rows().join("\n").toStdString(),
            (QStringList{"Boot / boot.lsu / 70 % / 2.2 s / Same / boot.lsu / 70 % / 2.2 s",
                         "Idle / idle.lsu / 55 % / 3.0 s / Other sound / Sound of 4.1 s",
                         "Motion 2 / swing2.lsu / 80 % / 0.9 s / Other volume / swing2.lsu / 60 % / 0.9 s",
                         "Lock-up 2 / lock.lsu / 75 % / 2.0 s / Only here / not on the board"})
                .join("\n")
                .toStdString());
}

TEST_F(CompareFrameTest, WhatDiffersIsNeverCutOff) {
  for (const QString& there : {QString("on the board"), QString("in the other set")}) {
    sides.texts.there = there;
    places[3] = {{SlotKind::Lockup, 2}, {}, ComparedSound{"/a/lock.lsu", 75, 96000}, Differs::OnlyInSecond};
    frame.Show(sides, places);
    frame.resize(912, 500);
    QApplication::processEvents();
    for (const CompareRow* const row : VisibleRows()) {
      const auto& words = *row->findChild<QLabel*>("VerdictLabel");
      EXPECT_GE(words.width(), words.sizeHint().width()) << words.text().toStdString();
    }
  }
}

TEST_F(CompareFrameTest, NamesCanBeReadInANarrowOneTooWhichLeavesOutTheLengths) {
  places[0].here->path = places[0].there->path = "/a/power off.lsu";
  frame.Show(sides, places);
  for (const auto& [width, hasLengths] : {std::pair(830, false), std::pair(912, false), std::pair(928, true)}) {
    frame.resize(width, 500);
    QApplication::processEvents();
    for (const CompareRow* const row : VisibleRows()) {
      for (const char* const side : {"HereLabel", "ThereLabel"})
        for (const QLabel* const name : row->findChildren<QLabel*>(side))
          EXPECT_GE(name->width(), name->fontMetrics().horizontalAdvance(name->text()))
              << width << ": " << name->text().toStdString();
      for (const QLabel* const length : row->findChildren<QLabel*>("SecondsLabel"))
        EXPECT_EQ(length->isVisible(), hasLengths) << width;
    }
  }
}

TEST_F(CompareFrameTest, OnlyDifferencesCanBeShown) {
  frame.findChild<QPushButton*>("CompareDifferencesBtn")->click();
  EXPECT_EQ(Rows().size(), 3);
  EXPECT_TRUE(Rows().front().startsWith("Idle"));
  frame.findChild<QPushButton*>("CompareAllBtn")->click();
  EXPECT_EQ(Rows().size(), 4);
  EXPECT_EQ(frame.findChild<QPushButton*>("CompareDifferencesBtn")->text(), "Only differences 3");
}

TEST_F(CompareFrameTest, OnlyKnownSoundsCanBeHeardAndTakenOver) {
  const auto has = [this](int row) {
    std::string parts;
    for (const CompareRow::Part part : CompareRow::kParts)
      parts += VisibleRows().at(row)->Button(part) != nullptr ? 'x' : '-';
    return parts;
  };
  EXPECT_EQ(has(0), "xx-");
  EXPECT_EQ(has(1), "x--") << "a sound that nobody knows";
  EXPECT_EQ(has(2), "xxx");
  EXPECT_EQ(has(3), "x--") << "nothing on the board";
}

TEST_F(CompareFrameTest, TakeOverAndPlaySayWhich) {
  static_cast<void>(Press(2, CompareRow::Part::TakeOver));
  EXPECT_EQ(taken, places[2]);
  const QAbstractButton& play = Press(2, CompareRow::Part::PlayThere);
  EXPECT_EQ(played, places[2].there);
  EXPECT_EQ(play.accessibleName(), "Stop Motion 2: swing2.lsu");
  static_cast<void>(Press(1, CompareRow::Part::PlayHere));
  EXPECT_EQ(played, places[1].here);
  EXPECT_EQ(play.accessibleName(), "Play Motion 2: swing2.lsu");
  EXPECT_EQ(stops, 0);
  static_cast<void>(Press(1, CompareRow::Part::PlayHere));
  EXPECT_EQ(stops, 1);
  static_cast<void>(Press(1, CompareRow::Part::PlayHere));
  frame.ShowSilence();
  static_cast<void>(Press(1, CompareRow::Part::PlayHere));
  EXPECT_EQ(stops, 1) << "it had ended by itself";
}

TEST_F(CompareFrameTest, TheArrowKeysLeadThroughTheTableAndTabPastIt) {
  const auto focus = [] { return static_cast<QAbstractButton*>(QApplication::focusWidget())->accessibleName(); };
  frame.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
  EXPECT_EQ(focus(), "Play Boot: boot.lsu");
  const auto key = [](int code) { QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(code)); };
  key(Qt::Key_Right);
  EXPECT_EQ(focus(), "Play Boot: boot.lsu");
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "PlayThereBtn");
  // Nothing can be pressed there in the row below.
  key(Qt::Key_Down);
  EXPECT_EQ(focus(), "Play Motion 2: swing2.lsu");
  key(Qt::Key_Right);
  EXPECT_EQ(focus(), "Take over Motion 2: swing2.lsu at 60 %");
  key(Qt::Key_Down);
  EXPECT_EQ(focus(), "Take over Motion 2: swing2.lsu at 60 %");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "CompareCloseBtn");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
  EXPECT_EQ(focus(), "Take over Motion 2: swing2.lsu at 60 %");
}

TEST_F(CompareFrameTest, WhatIsTakenOverKeepsTheKeyboardInItsRow) {
  frame.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
  VisibleRows().at(2)->Button(CompareRow::Part::TakeOver)->setFocus();
  places[2].here = places[2].there;
  places[2].differs.reset();
  frame.Show(sides, places);
  EXPECT_EQ(QApplication::focusWidget(), VisibleRows().at(2)->Button(CompareRow::Part::PlayThere));
}

TEST_F(CompareFrameTest, WithoutAnAnswerThereIsNoTable) {
  frame.ShowNothing(sides, "The board is being asked what it holds ...");
  EXPECT_TRUE(Rows().isEmpty());
  EXPECT_TRUE(frame.findChild<QLabel*>("CompareNothingLabel")->isVisible());
  EXPECT_FALSE(frame.findChild<QPushButton*>("CompareAllBtn")->isVisible());
  frame.Show(sides, places);
  EXPECT_EQ(Rows().size(), 4);
}

TEST_F(CompareFrameTest, SendingIsForBoardsThatCanTakeIt) {
  auto& send = *frame.findChild<QPushButton*>("CompareSendBtn");
  frame.ShowWhyNotSend("Add an idle sound.");
  EXPECT_FALSE(send.isEnabled());
  EXPECT_EQ(send.toolTip(), "Add an idle sound.");
  frame.ShowWhyNotSend({});
  QSignalSpy wanted(&frame, &CompareFrame::sendWanted);
  send.click();
  EXPECT_EQ(wanted.count(), 1);
  sides.isBoard = false;
  frame.Show(sides, places);
  EXPECT_FALSE(send.isVisible());
}

TEST(CompareSummary, CountsWhatDiffers) {
  const auto place = [](std::optional<Differs> differs) { return ComparedPlace{{}, {}, {}, differs}; };
  EXPECT_EQ(CompareFrame::Summary({place({}), place({})}, "on the board"), "All 2 sounds are the same.");
  EXPECT_EQ(CompareFrame::Summary({place(Differs::OnlyInSecond), place(Differs::OnlyInSecond), place({}), place({})},
                                  "on the board"),
            "2 sounds are the same, 2 are only on the board.");
  EXPECT_EQ(CompareFrame::Summary({place(Differs::Sound)}, "on the board"), "No sound is the same, 1 differs.");
}

}  // namespace
}  // namespace kestrin::ui::board
