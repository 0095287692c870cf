// SPDX-License-Identifier: MIT
// What the pointer does on the stage, and what is seen there.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTest>
#include <vector>

#include "ui/stage/BladeMotion.h"
#include "ui/stage/BladePainter.h"
#include "ui/stage/TryControlFixture.h"

namespace kestrin::ui::stage {
namespace {

using core::saber::Event;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(TryControlTest, LetsGoOfTheStageWhenTheWindowLosesThePointer) {
  StartOn();
  QTest::mousePress(&frame->Stage(), Qt::LeftButton, {}, QPoint(400, 60));
  Pass(1000);
  ASSERT_THAT(Sounding(), ElementsAre(8000, 1000));
  QEvent away(QEvent::WindowDeactivate);
  QApplication::sendEvent(&frame->Stage(), &away);
  Pass(20);
  EXPECT_THAT(Sounding(), ElementsAre(1000));
}

TEST_F(TryControlTest, WhatThePointerDoesBeforeTheBladeIsOutCountsForNothing) {
  Start();
  std::vector<Event> moved;
  QObject::connect(&*control, &TryControl::moved, [&moved](Event event) { moved.push_back(event); });
  Key(Qt::Key_P);
  Pass(30);
  // A quick turn that stops dead just before the blade is out, after a tenth of a second.
  for (const double degrees : {10, 20, 30, 40, 50}) {
    Lead(degrees);
    Pass(10);
  }
  Pass(100);
  EXPECT_THAT(Sounding(), ElementsAre(1000));
  EXPECT_THAT(moved, IsEmpty());
}

TEST_F(TryControlTest, TheBladeComesOutForAsLongAsThePowerOnSoundLasts) {
  AddAll();
  ASSERT_TRUE(set.Remove(SlotKind::PwrOn, 1));
  Add(SlotKind::PwrOn, "slow.lsu", 200, kSecond);
  Make();
  Show();
  Pass(300);
  const auto isLit = [this](double share) {
    const StageView& stage = frame->Stage();
    const SaberPlace place(QSizeF(stage.size()), BladeMotion::kHeld);
    return frame->Stage().grab().toImage().pixelColor(place.Along(share).toPoint()).green() > 200;
  };
  Key(Qt::Key_P);
  EXPECT_FALSE(isLit(0.1));
  Pass(500);
  EXPECT_TRUE(isLit(0.4));
  EXPECT_FALSE(isLit(0.75));
  Pass(550);
  EXPECT_TRUE(isLit(0.95));
}

TEST_F(TryControlTest, AHitFlashesForTheFlashPeriodOfTheBoard) {
  detection.flashPeriod = 800;
  StartOn();
  control->SetFewer(false);
  // The flash is white, the blade's own colour has hardly any red.
  const auto red = [this] {
    const SaberPlace place(QSizeF(frame->Stage().size()), BladeMotion::kHeld);
    const QImage image = frame->Stage().grab().toImage();
    int sum = 0;
    for (const double share : {0.2, 0.35, 0.5, 0.65, 0.8}) {
      const QPointF above = place.Along(share) - QPointF(0, 18 * place.Unit());
      sum += image.pixelColor(above.toPoint()).red();
    }
    return sum / 5;
  };
  Pass(500);
  const int before = red();
  Key(Qt::Key_H);
  Pass(400);
  EXPECT_GT(red(), before + 20);
  Pass(500);
  EXPECT_NEAR(red(), before, 10);
}

TEST_F(TryControlTest, SparksFlyWithEveryHitUnlessThereAreToBeFewerFlashes) {
  StartOn();
  // Sparks are warm, nothing else here is.
  const auto fly = [this] {
    const QImage image = frame->Stage().grab().toImage();
    // Between the texts and the ground, in front of the hand.
    for (int y = 60; y < image.height() * 4 / 5; ++y)
      for (int x = image.width() / 3; x < image.width(); ++x)
        if (const QColor color = image.pixelColor(x, y); color.red() > 150 && color.red() > color.blue() + 25)
          return true;
    return false;
  };
  for (const bool isFewer : {true, false}) {
    control->SetFewer(isFewer);
    Pass(1000);
    EXPECT_FALSE(fly());
    Key(Qt::Key_H);
    Pass(60);
    EXPECT_TRUE(fly());
    Pass(260);
    Key(Qt::Key_H);
    // Those of the first hit are gone after 0.38 s.
    Pass(80);
    EXPECT_EQ(fly(), !isFewer) << "sooner than a third of a second after the first";
  }
}

TEST_F(TryControlTest, AClickOnTheStageSwitchesOnThenHits) {
  Start();
  QTest::mouseClick(&frame->Stage(), Qt::LeftButton, {}, QPoint(400, 60));
  EXPECT_THAT(Sounding(), ElementsAre(200));
  Pass(200);
  QTest::mouseClick(&frame->Stage(), Qt::LeftButton, {}, QPoint(400, 60));
  EXPECT_THAT(Sounding(), ElementsAre(4000, 1000));
  Pass(600);
  EXPECT_THAT(Sounding(), ElementsAre(1000));
}

TEST_F(TryControlTest, HoldingTheButtonOnTheStageLocksUp) {
  StartOn();
  QTest::mousePress(&frame->Stage(), Qt::LeftButton, {}, QPoint(400, 60));
  Pass(TryControl::kHold - 20);
  EXPECT_THAT(Sounding(), ElementsAre(1000));
  Pass(40);
  EXPECT_THAT(Sounding(), ElementsAre(8000, 1000));
  Pass(2000);
  EXPECT_THAT(Sounding(), ElementsAre(8000, 1000));
  QTest::mouseRelease(&frame->Stage(), Qt::LeftButton, {}, QPoint(400, 60));
  Pass(20);
  EXPECT_THAT(Sounding(), ElementsAre(1000));
}

TEST_F(TryControlTest, AQuickPointerSwingsTheBlade) {
  StartOn();
  double degrees = 16;
  const auto turn = [&](double speed, int time) {
    for (int passed = 0; passed < time; passed += 10) {
      clock.Advance(std::chrono::milliseconds(10));
      degrees += speed / 100;
      Lead(degrees);
      if (output.IsPlaying()) last = output.Pull(480).back();
    }
  };
  turn(0, 100);
  turn(150, 100);
  EXPECT_THAT(Sounding(), ElementsAre(1000)) << "slower than the factory's threshold";
  turn(-220, 100);
  EXPECT_THAT(Sounding(), ElementsAre(2000, 1000));
}

TEST_F(TryControlTest, TakesTheThresholdOfTheBoard) {
  detection.sensitivity = {40, 2};
  StartOn();
  for (int i = 0; i < 12; ++i) {
    clock.Advance(std::chrono::milliseconds(10));
    Lead(16 + i * 0.6);
  }
  EXPECT_THAT(Sounding(), ElementsAre(2000, 1000));
}

TEST_F(TryControlTest, ThePointerTakesTheBladeFromWhereKeysHaveSwungIt) {
  StartOn();
  Lead(16);
  Pass(100);
  std::vector<Event> moved;
  QObject::connect(&*control, &TryControl::moved, [&moved](Event event) { moved.push_back(event); });
  Key(Qt::Key_S);
  Pass(300);
  // A hair's breadth from where it was: 34 degrees from where the key has swung the blade.
  Lead(16.2);
  Pass(300);
  EXPECT_THAT(moved, ElementsAre(Event::Swing));
}

TEST_F(TryControlTest, ThePointerTakesTheBladeWhereverItComesOntoTheStage) {
  StartOn();
  Lead(16);
  Pass(100);
  std::vector<Event> moved;
  QObject::connect(&*control, &TryControl::moved, [&moved](Event event) { moved.push_back(event); });
  // With pictures between the two, and without.
  for (const int pause : {50, 0}) {
    emit frame->Stage().entered();
    Pass(pause);
    Lead(60);
    Pass(300);
    EXPECT_THAT(moved, IsEmpty()) << pause;
    Lead(16);
    Pass(300);
    moved.clear();
  }
}

}  // namespace
}  // namespace kestrin::ui::stage
