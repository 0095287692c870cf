// SPDX-License-Identifier: MIT
#include "ui/sound/LevelFrame.h"

#include <gtest/gtest.h>

#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

namespace kestrin::ui::sound {
namespace {

using core::sound::Balance;
using core::sound::SlotKind;

class LevelFrameTest : public ::testing::Test {
 protected:
  LevelFrameTest() {
    QObject::connect(&frame, &LevelFrame::levelRequested, [this] { ++levels; });
    QObject::connect(&frame, &LevelFrame::stopRequested, [this] { ++stops; });
    frame.Open();
    frame.activateWindow();
  }
  QSpinBox& Box(const char* slot) { return *frame.findChild<QSpinBox*>(QStringLiteral("Balance_") + slot); }
  QPushButton& Button(const char* name) { return *frame.findChild<QPushButton*>(name); }

  LevelFrame frame;
  int levels = 0;
  int stops = 0;
};

TEST_F(LevelFrameTest, ShowsTheUsualBalanceAtFirst) {
  EXPECT_EQ(frame.Balance(), Balance());
  for (const core::sound::Slot& slot : core::sound::kSlots) {
    const QSpinBox& box = Box(std::string(slot.name).c_str());
    EXPECT_EQ(box.value(), Balance().Of(slot.kind)) << slot.name;
    EXPECT_EQ(box.minimum(), -24);
    EXPECT_EQ(box.maximum(), 24);
    EXPECT_TRUE(box.accessibleName().startsWith("Balance of ")) << slot.name;
  }
  EXPECT_FALSE(Button("UsualBalanceBtn").isEnabled());
}

TEST_F(LevelFrameTest, TheBalanceIsShiftedAndPutBack) {
  Box("idle").setValue(-12);
  Box("impact").setValue(3);
  EXPECT_EQ(frame.Balance().Of(SlotKind::Idle), -12);
  EXPECT_EQ(frame.Balance().Of(SlotKind::Impact), 3);
  EXPECT_EQ(frame.Balance().Of(SlotKind::Motion), Balance().Of(SlotKind::Motion));
  EXPECT_TRUE(Button("UsualBalanceBtn").isEnabled());
  Button("UsualBalanceBtn").setFocus();
  Button("UsualBalanceBtn").click();
  EXPECT_EQ(frame.Balance(), Balance());
  EXPECT_FALSE(Button("UsualBalanceBtn").isEnabled());
}

TEST_F(LevelFrameTest, WhileItMeasuresOnlyCancelCanBeUsedAndStops) {
  Box("idle").setValue(-12);
  Button("LevelNowBtn").click();
  EXPECT_EQ(levels, 1);
  frame.SetRunning(true);
  for (const core::sound::Slot& slot : core::sound::kSlots)
    EXPECT_FALSE(Box(std::string(slot.name).c_str()).isEnabled());
  EXPECT_FALSE(Button("LevelNowBtn").isEnabled());
  EXPECT_FALSE(Button("UsualBalanceBtn").isEnabled());
  frame.ShowPercent(40);
  EXPECT_EQ(frame.findChild<QProgressBar*>("LevelBar")->value(), 40);
  Button("CancelLevelBtn").click();
  QTest::keyClick(&frame, Qt::Key_Escape);
  EXPECT_EQ(stops, 2);
  EXPECT_TRUE(frame.isVisible());
  frame.SetRunning(false);
  EXPECT_TRUE(Button("LevelNowBtn").isEnabled());
  EXPECT_TRUE(Button("UsualBalanceBtn").isEnabled());
  EXPECT_EQ(frame.findChild<QProgressBar*>("LevelBar")->value(), 0);
}

TEST_F(LevelFrameTest, CancelAndEscapeCloseItOtherwise) {
  Button("CancelLevelBtn").click();
  EXPECT_FALSE(frame.isVisible());
  frame.Open();
  QTest::keyClick(&frame, Qt::Key_Escape);
  EXPECT_FALSE(frame.isVisible());
  EXPECT_EQ(stops, 0);
}

}  // namespace
}  // namespace kestrin::ui::sound
