// SPDX-License-Identifier: MIT
#include "ui/stage/TryControl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <map>
#include <vector>

#include "ui/stage/Timeline.h"
#include "ui/stage/TryControlFixture.h"
#include "ui/stage/TryList.h"
#include "ui/stage/TryRows.h"

namespace kestrin::ui::stage {
namespace {

using core::saber::Event;
using core::saber::State;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(TryControlTest, StartsTheBoardAndSwitchesTheBladeByKeys) {
  AddAll();
  Make();
  Show();
  EXPECT_THAT(Sounding(), ElementsAre(100));
  Pass(200);
  EXPECT_THAT(Sounding(), IsEmpty());
  EXPECT_FALSE(output.IsPlaying());
  Key(Qt::Key_Space);
  EXPECT_THAT(Sounding(), ElementsAre(200));
  EXPECT_TRUE(Button("TryPowerBtn").isChecked());
  Pass(150);
  EXPECT_THAT(Sounding(), ElementsAre(1000));
  Pass(700);
  EXPECT_THAT(Sounding(), ElementsAre(1000)) << "the hum goes on";
  Key(Qt::Key_P);
  EXPECT_FALSE(Button("TryPowerBtn").isChecked());
  Pass(20);
  EXPECT_THAT(Sounding(), ElementsAre(300));
  Pass(200);
  EXPECT_THAT(Sounding(), IsEmpty());
}

TEST_F(TryControlTest, SwingsAndHitsByKeys) {
  StartOn();
  for (const int key : {Qt::Key_S, Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) {
    Key(key);
    EXPECT_THAT(Sounding(), ElementsAre(2000, 1000)) << key;
    Pass(200);
    EXPECT_THAT(Sounding(), ElementsAre(1000)) << key;
  }
  for (const int key : {Qt::Key_H, Qt::Key_Return, Qt::Key_Enter}) {
    Key(key);
    EXPECT_THAT(Sounding(), ElementsAre(4000, 1000)) << key;
    Pass(200);
  }
}

TEST_F(TryControlTest, TellsOfSwingsAndHitsOfABladeThatIsOut) {
  Start();
  std::vector<Event> moved;
  QObject::connect(&*control, &TryControl::moved, [&moved](Event event) { moved.push_back(event); });
  Key(Qt::Key_S);
  Key(Qt::Key_H);
  EXPECT_THAT(moved, IsEmpty());
  Key(Qt::Key_P);
  Pass(300);
  Key(Qt::Key_S);
  Key(Qt::Key_H);
  EXPECT_THAT(moved, ElementsAre(Event::Swing, Event::Hit));
}

TEST_F(TryControlTest, AKeyThatIsHeldIsPressedOnce) {
  StartOn();
  QTest::keyPress(&frame->Stage(), Qt::Key_H);
  Pass(300);
  Repeat(Qt::Key_H);
  Repeat(Qt::Key_Space);
  Repeat(Qt::Key_S);
  Repeat(Qt::Key_L);
  EXPECT_THAT(Sounding(), ElementsAre(1000));
}

TEST_F(TryControlTest, LocksUpForAsLongAsTheKeyIsHeld) {
  StartOn();
  QTest::keyPress(&frame->Stage(), Qt::Key_L);
  EXPECT_THAT(Sounding(), ElementsAre(8000, 1000));
  Pass(1500);
  EXPECT_THAT(Sounding(), ElementsAre(8000, 1000));
  QTest::keyRelease(&frame->Stage(), Qt::Key_L);
  Pass(20);
  EXPECT_THAT(Sounding(), ElementsAre(1000));
}

TEST_F(TryControlTest, AShortLockupCanBeHeard) {
  StartOn();
  // As those do it who have nothing but the action of a button.
  QTest::mouseClick(&Button("TryLockupBtn"), Qt::LeftButton);
  Pass(TryControl::kShortestLockup - 100);
  EXPECT_THAT(Sounding(), ElementsAre(8000, 1000));
  Pass(150);
  EXPECT_THAT(Sounding(), ElementsAre(1000));
}

TEST_F(TryControlTest, LetsGoWhenTheWindowLosesTheKeyboard) {
  StartOn();
  QTest::keyPress(&frame->Stage(), Qt::Key_L);
  Pass(1000);
  QEvent away(QEvent::WindowDeactivate);
  QApplication::sendEvent(frame, &away);
  Pass(20);
  EXPECT_THAT(Sounding(), ElementsAre(1000));
}

TEST_F(TryControlTest, WhatSoundsIsBroughtIntoSight) {
  AddAll();
  for (int i = 2; i <= 12; ++i) Add(SlotKind::Motion, "swing" + std::to_string(i) + ".lsu", 2000, 4800);
  Make();
  frame->resize(960, 500);
  Show();
  Pass(300);
  const auto isSeen = [this](const SoundPlace& place) {
    return frame->List().viewport()->rect().contains(frame->List().visualRect(frame->Rows().IndexOf(place)));
  };
  EXPECT_TRUE(isSeen({SlotKind::Boot, 1}));
  EXPECT_FALSE(isSeen({SlotKind::Lockup, 1}));
  Key(Qt::Key_P);
  Pass(300);
  QTest::keyPress(&frame->Stage(), Qt::Key_L);
  Pass(20);
  EXPECT_TRUE(isSeen({SlotKind::Lockup, 1}));
  QTest::keyRelease(&frame->Stage(), Qt::Key_L);
}

TEST_F(TryControlTest, ASoundThatIsGoneWhenItsVolumeChangesIsToldAndLeftOut) {
  StartOn();
  std::filesystem::remove(folder / "swing.lsu");
  set.SetVolume(SlotKind::Motion, 1, 50);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !news.empty(); }, 20000));
  EXPECT_THAT(news[0], HasSubstr("swing.lsu"));
  EXPECT_FALSE(Button("TryPowerBtn").isChecked());
  Pass(300);
  Key(Qt::Key_P);
  Pass(300);
  Key(Qt::Key_S);
  EXPECT_THAT(Sounding(), ElementsAre(1000));
  Key(Qt::Key_H);
  EXPECT_THAT(Sounding(), ElementsAre(4000, 1000));
}

TEST_F(TryControlTest, ButtonsDoWhatTheirKeysDo) {
  Start();
  QTest::mouseClick(&Button("TryPowerBtn"), Qt::LeftButton);
  EXPECT_THAT(Sounding(), ElementsAre(200));
  Pass(200);
  QTest::mouseClick(&Button("TrySwingBtn"), Qt::LeftButton);
  EXPECT_THAT(Sounding(), ElementsAre(2000, 1000));
  QTest::mouseClick(&Button("TryHitBtn"), Qt::LeftButton);
  Pass(10);
  EXPECT_THAT(Sounding(), ElementsAre(4000, 1000));
  Pass(200);
  QTest::mousePress(&Button("TryLockupBtn"), Qt::LeftButton);
  Pass(2000);
  EXPECT_THAT(Sounding(), ElementsAre(8000, 1000));
  QTest::mouseRelease(&Button("TryLockupBtn"), Qt::LeftButton);
  Pass(20);
  EXPECT_THAT(Sounding(), ElementsAre(1000));
  // A button that has the keyboard takes Space for itself.
  Button("TrySwingBtn").setFocus();
  QTest::keyClick(&Button("TrySwingBtn"), Qt::Key_Space);
  EXPECT_THAT(Sounding(), ElementsAre(2000, 1000));
  QTest::keyClick(&Button("TrySwingBtn"), Qt::Key_P);
  Pass(10);
  EXPECT_THAT(Sounding(), ElementsAre(300));
}

TEST_F(TryControlTest, NothingIsHeardOnceThePageIsLeft) {
  StartOn();
  frame->hide();
  EXPECT_FALSE(output.IsPlaying());
  EXPECT_FALSE(frame->findChild<QTimer*>("StageTimer")->isActive());
  Key(Qt::Key_P);
  EXPECT_FALSE(frame->findChild<QTimer*>("StageTimer")->isActive());
  frame->show();
  EXPECT_FALSE(Button("TryPowerBtn").isChecked());
}

TEST_F(TryControlTest, ItsClockStopsWhenNothingMoves) {
  Start();
  Pass(1500);
  QTimer& timer = *frame->findChild<QTimer*>("StageTimer");
  EXPECT_FALSE(timer.isActive());
  Lead(40);
  EXPECT_TRUE(timer.isActive());
  Pass(3000);
  EXPECT_FALSE(timer.isActive());
  Key(Qt::Key_P);
  Pass(5000);
  EXPECT_TRUE(timer.isActive()) << "the blade shimmers";
  Key(Qt::Key_P);
  Pass(2000);
  EXPECT_FALSE(timer.isActive());
}

TEST_F(TryControlTest, WhatSoundsIsLitAndLeavesATrace) {
  StartOn();
  Key(Qt::Key_S);
  Pass(20);
  const auto told = [this](SlotKind kind) {
    return frame->Rows().IndexOf({kind, 1}).data(Qt::AccessibleTextRole).toString().toStdString();
  };
  EXPECT_THAT(told(SlotKind::Motion), HasSubstr("sounding"));
  EXPECT_THAT(told(SlotKind::Idle), HasSubstr("sounding"));
  Pass(200);
  EXPECT_THAT(told(SlotKind::Motion), testing::Not(HasSubstr("sounding")));
  frame->Times().setFocus();
  EXPECT_THAT(frame->Times().accessibleDescription().toStdString(), HasSubstr("Motion 1: swing, 0.2 s ago"));
  QTest::keyClick(&frame->Times(), Qt::Key_Return);
  ASSERT_EQ(chosen.size(), 1U);
  EXPECT_EQ(chosen[0], (SoundPlace{SlotKind::Motion, 1}));
}

TEST_F(TryControlTest, AVolumeIsHeardAtOnceAndCanBeTakenBack) {
  StartOn();
  set.SetVolume(SlotKind::Idle, 1, 30);
  ASSERT_TRUE(QTest::qWaitFor([this] {
    Pass(10);
    return last == 300;
  }));
  EXPECT_TRUE(Button("TryPowerBtn").isChecked()) << "the blade stays out";
  set.Undo();
  ASSERT_TRUE(QTest::qWaitFor([this] {
    Pass(10);
    return last == 1000;
  }));
}

TEST_F(TryControlTest, AsOnTheBoardIsHeardAtOnceWithTheBladeOut) {
  StartOn();
  // Coded for the board, a sound that is all as loud is all of it at full height.
  control->SetAsOnBoard(true);
  AwaitSounds();
  Pass(20);
  EXPECT_GT(last, 30000);
  EXPECT_TRUE(Button("TryPowerBtn").isChecked());
  control->SetAsOnBoard(false);
  AwaitSounds();
  Pass(20);
  EXPECT_EQ(last, 1000);
}

TEST_F(TryControlTest, TheBoardStartsWheneverThePageIsOpened) {
  Start();
  frame->hide();
  frame->show();
  EXPECT_THAT(Sounding(), ElementsAre(100));
}

TEST_F(TryControlTest, CountsWhatIsTooLoudUntilAVolumeIsChanged) {
  AddAll();
  Add(SlotKind::Motion, "loud.lsu", 32000, 4800);
  ASSERT_TRUE(set.Remove(SlotKind::Motion, 1));
  Make();
  Show();
  Pass(300);
  Key(Qt::Key_P);
  Pass(300);
  // A warning is amber, which nothing else is there.
  const auto isWarned = [this] {
    const QImage image = frame->Stage().grab(QRect(16, 40, 300, 40)).toImage();
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x)
        if (const QColor color = image.pixelColor(x, y); color.red() > 200 && color.blue() < 140) return true;
    return false;
  };
  EXPECT_FALSE(isWarned());
  Key(Qt::Key_S);
  // 32,000 and 1,000 are more than 32,767, for all of the swing's 4,800 samples.
  Pass(300);
  EXPECT_TRUE(isWarned());
  set.SetVolume(SlotKind::Motion, 1, 50);
  EXPECT_TRUE(QTest::qWaitFor([&] {
    Pass(20);
    return !isWarned();
  }));
}

TEST_F(TryControlTest, AnotherSoundBeginsAnewWithTheBladeIn) {
  StartOn();
  Add(SlotKind::Motion, "more.lsu", 500, 4800);
  AwaitSounds();
  Pass(20);
  EXPECT_FALSE(Button("TryPowerBtn").isChecked());
  EXPECT_EQ(frame->Rows().IndexOf({SlotKind::Motion, 2}).data(Qt::DisplayRole), "more.lsu");
}

TEST_F(TryControlTest, PowerPressedWhileSoundsAreReadIsNotForgotten) {
  AddAll();
  Make();
  frame->show();
  Key(Qt::Key_P);
  AwaitSounds();
  EXPECT_THAT(Sounding(), ElementsAre(200)) << "without the boot sound";
}

TEST_F(TryControlTest, PowerPressedWhileTheSameSoundsAreReadOtherwiseIsNotForgotten) {
  Start();
  control->SetAsOnBoard(true);
  Key(Qt::Key_P);
  AwaitSounds();
  Pass(20);
  EXPECT_TRUE(Button("TryPowerBtn").isChecked());
  // Nothing is left over that would switch it on once more.
  Key(Qt::Key_P);
  Pass(300);
  control->SetAsOnBoard(false);
  AwaitSounds();
  Pass(20);
  EXPECT_FALSE(Button("TryPowerBtn").isChecked());
  EXPECT_FALSE(output.IsPlaying());
}

TEST_F(TryControlTest, PowerSwitchesOffAlsoWhileSoundsAreRead) {
  StartOn();
  control->SetAsOnBoard(true);
  ASSERT_TRUE(frame->findChild<SoundReader*>()->IsReading());
  Key(Qt::Key_P);
  EXPECT_FALSE(Button("TryPowerBtn").isChecked());
  AwaitSounds();
  Pass(300);
  EXPECT_FALSE(Button("TryPowerBtn").isChecked());
}

TEST_F(TryControlTest, TheBoardStartsAlsoWhenItsSoundsAreReadOtherwiseSinceTheLastTime) {
  Start();
  frame->hide();
  control->SetAsOnBoard(true);
  frame->show();
  AwaitSounds();
  EXPECT_TRUE(output.IsPlaying()) << "the boot sound";
}

TEST_F(TryControlTest, ASoundThatCannotBeReadIsToldAndLeftOut) {
  AddAll();
  Add(SlotKind::Motion, "gone.lsu", 700, 4800);
  Add(SlotKind::Motion, "third.lsu", 2000, 4800);
  std::filesystem::remove(folder / "gone.lsu");
  Make();
  Show();
  ASSERT_EQ(news.size(), 1U);
  EXPECT_THAT(news[0], HasSubstr("gone.lsu"));
  EXPECT_THAT(news[0], HasSubstr("The others can be tried."));
  Pass(300);
  Key(Qt::Key_P);
  Pass(300);
  // Of the two that are left none comes twice in a row; their places are those of the set.
  std::map<int, int> lit;
  for (int i = 0; i < 4; ++i) {
    Key(Qt::Key_S);
    EXPECT_THAT(Sounding(), ElementsAre(2000, 1000));
    for (const int position : {1, 2, 3})
      if (frame->Rows().IndexOf({SlotKind::Motion, position}).data(TryRows::kIsLit).toBool()) ++lit[position];
    Pass(200);
  }
  EXPECT_EQ(lit, (std::map<int, int>{{1, 2}, {3, 2}}));
}

TEST_F(TryControlTest, GoesOnWithoutSoundAndSaysSo) {
  AddAll();
  output.Fail("There is no sound service.");
  Make();
  Show();
  Pass(20);
  ASSERT_EQ(news.size(), 1U);
  EXPECT_EQ(news[0], "No sound: There is no sound service. The saber goes on without it.");
  Pass(300);
  Key(Qt::Key_P);
  Pass(300);
  EXPECT_TRUE(Button("TryPowerBtn").isChecked());
  EXPECT_TRUE(frame->Rows().IndexOf({SlotKind::Idle, 1}).data(TryRows::kIsLit).toBool());
  Key(Qt::Key_H);
  Pass(20);
  EXPECT_TRUE(frame->Rows().IndexOf({SlotKind::Impact, 1}).data(TryRows::kIsLit).toBool());
  EXPECT_EQ(news.size(), 1U);
}

TEST_F(TryControlTest, ASetWithoutSoundsHasASilentSaber) {
  Make();
  Show();
  Key(Qt::Key_P);
  Pass(400);
  EXPECT_TRUE(Button("TryPowerBtn").isChecked());
  for (const int key : {Qt::Key_S, Qt::Key_H, Qt::Key_L, Qt::Key_P}) {
    Key(key);
    Pass(1000);
  }
  EXPECT_FALSE(Button("TryPowerBtn").isChecked());
  EXPECT_THAT(news, IsEmpty());
}

TEST_F(TryControlTest, ChosenSoundsAreHeardAsTheSwitchSays) {
  Start();
  emit frame->List().chosen({SlotKind::Idle, 1});
  control->SetAsOnBoard(true);
  emit frame->List().chosen({SlotKind::Idle, 1});
  emit frame->List().chosen({SlotKind::Idle, 2});
  ASSERT_EQ(heard.size(), 2U);
  EXPECT_FALSE(heard[0].asOnBoard);
  EXPECT_TRUE(heard[1].asOnBoard);
  EXPECT_EQ(heard[0].path.filename(), "idle.lsu");
}

TEST_F(TryControlTest, TellsWhatIsDescribedToThoseWhoDoNotSee) {
  Start();
  EXPECT_EQ(frame->Stage().accessibleDescription(), "Blade in");
  Key(Qt::Key_P);
  Pass(20);
  EXPECT_EQ(frame->Stage().accessibleDescription(), "Blade on");
}

}  // namespace
}  // namespace kestrin::ui::stage
