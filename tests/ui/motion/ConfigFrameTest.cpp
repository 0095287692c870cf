// SPDX-License-Identifier: MIT
#include <QGroupBox>

#include "ui/motion/ConfigFrameFixture.h"

namespace kestrin::support {
namespace {

using ConfigFrame = ConfigFrameFixture;

TEST_F(ConfigFrame, HasTheSlidersOfTheTable) {
  Start("id=4389");
  EXPECT_EQ(LabelText("ConfigCaption"), "Acceleration Sensor Configuration");
  for (const ConfigRow& row : kConfigRows) {
    const auto& slider = Find<QSlider>(row.slider);
    EXPECT_EQ(slider.minimum(), row.minimum) << row.slider;
    EXPECT_EQ(slider.maximum(), row.maximum) << row.slider;
    EXPECT_EQ(slider.singleStep(), row.step) << row.slider;
    EXPECT_EQ(slider.pageStep(), 5) << row.slider;
    const auto* const group = qobject_cast<QGroupBox*>(slider.parentWidget());
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->title(), row.group);
    const QList<QLabel*> labels = group->findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
      return label->text() == row.caption && label->buddy() == &slider;
    })) << row.caption;
  }
  EXPECT_EQ(Find<QPushButton>("SendCmdBtn").text(), "SEND Configuration");
  EXPECT_EQ(Find<QPushButton>("DefaultBtn").text(), "Factory Default");
  EXPECT_EQ(Find<QPushButton>("CloseCfgBtn").text(), "CLOSE Window");
}

TEST_F(ConfigFrame, IsHiddenUntilItsButtonIsPressedAndAgainWhenClosed) {
  Start();
  EXPECT_FALSE(Shown("ConfigFrame"));
  Button("ConfigBtn").click();
  EXPECT_TRUE(Shown("ConfigFrame"));
  Press("CloseCfgBtn");
  EXPECT_FALSE(Shown("ConfigFrame"));
  EXPECT_TRUE(Button("ConfigBtn").isEnabled());
}

TEST_F(ConfigFrame, ShowsWhatABoardWithAFlashPeriodHolds) {
  // Revision 293 is identity 4096 + 293.
  StartHolding(4389, {7, 8, 9, 10, 11, 100});
  EXPECT_EQ(Sliders(), (Values{7, 8, 9, 10, 11, 400}));
  ExpectLabelsLikeSliders();
  Button("ConfigBtn").click();
  EXPECT_TRUE(Find<QSlider>("FOCTimeSlider").isEnabled());
  EXPECT_TRUE(Find<QLabel>("FOCTimeLabel").isEnabled());
}

TEST_F(ConfigFrame, ShowsTheFlashPeriodOfOlderBoardsAs52AndLocksIt) {
  StartHolding(4388, {7, 8, 9, 10, 11, 100});
  EXPECT_EQ(Sliders(), (Values{7, 8, 9, 10, 11, 52}));
  ExpectLabelsLikeSliders();
  Button("ConfigBtn").click();
  EXPECT_FALSE(Find<QSlider>("FOCTimeSlider").isEnabled());
  EXPECT_FALSE(Find<QLabel>("FOCTimeLabel").isEnabled());
}

TEST_F(ConfigFrame, ShowsValuesOutOfRangeAsTheNearestInside) {
  StartHolding(65535, {0, 255, 255, 0, 0, 255});
  // 255 units of 4 ms would be 1,020 ms.
  EXPECT_EQ(Sliders(), (Values{1, 25, 31, 1, 1, 1000}));
  ExpectLabelsLikeSliders();
}

TEST_F(ConfigFrame, SnapsTheFlashPeriodToStepsOfTheBoard) {
  Start("id=4389");
  auto& slider = Find<QSlider>("FOCTimeSlider");
  for (const auto& [moved, shown] : {std::pair{53, 52}, std::pair{54, 56}, std::pair{50, 48}, std::pair{58, 56},
                                     std::pair{20, 20}, std::pair{1000, 1000}, std::pair{998, 1000}}) {
    slider.setValue(moved);
    EXPECT_EQ(slider.value(), shown) << moved;
    EXPECT_EQ(LabelText("FOCTimeLabel"), QString::number(shown)) << moved;
  }
}

TEST_F(ConfigFrame, LabelsFollowTheSliders) {
  Start("id=4389");
  for (const ConfigRow& row : kConfigRows) {
    Find<QSlider>(row.slider).setValue(24);
    EXPECT_EQ(LabelText(row.label), "24") << row.label;
  }
}

TEST_F(ConfigFrame, FactoryDefaultsAreShownAndNotSent) {
  StartHolding(4389, {7, 8, 9, 10, 11, 100});
  Button("ConfigBtn").click();
  Press("DefaultBtn");
  EXPECT_EQ(Sliders(), (Values{180, 2, 10, 50, 125, 52}));
  ExpectLabelsLikeSliders();
  Press("CloseCfgBtn");
  EXPECT_EQ(Held(), (Values{7, 8, 9, 10, 11, 100}));
  Button("ConfigBtn").click();
  EXPECT_EQ(Sliders(), (Values{180, 2, 10, 50, 125, 52}));
}

TEST_F(ConfigFrame, SendsTheSlidersAndRestartsTheBoard) {
  Start("id=4389");
  Button("ConfigBtn").click();
  const Values wanted{1, 25, 31, 255, 2, 400};
  for (std::size_t i = 0; i < wanted.size(); ++i) Find<QSlider>(kConfigRows[i].slider).setValue(wanted[i]);
  Press("SendCmdBtn");
  EXPECT_EQ(Held(), (Values{1, 25, 31, 255, 2, 100}));
  EXPECT_EQ(agent->Board().State().resets, 1U);
  EXPECT_EQ(Sliders(), wanted);
  EXPECT_TRUE(Shown("ConfigFrame"));
}

TEST_F(ConfigFrame, ShowsWhatTheBoardHasMadeOfTheNewValues) {
  // On a wire that takes time, so that something can happen between two commands.
  Start("id=4389,wire=usb");
  Button("ConfigBtn").click();
  simulator::BoardState clipped = agent->Board().State();
  clipped.accelerometer = {40, 3, 4, 5, 6, 7};
  clock.whileWaiting = [this, &clipped] {
    if (agent->Board().State().resets != 1) return;
    // Two resets are never sent, so this happens once.
    clipped.resets = 2;
    agent->Board() = simulator::VirtualBoard(clipped);
  };
  Find<QSlider>("MotionThresholdSlider").setValue(99);
  Press("SendCmdBtn");
  clock.whileWaiting = nullptr;
  EXPECT_EQ(Sliders(), (Values{40, 3, 4, 5, 6, 28}));
  ExpectLabelsLikeSliders();
}

TEST_F(ConfigFrame, SendsTheLockedFlashPeriodOfOlderBoardsToo) {
  StartHolding(0, {7, 8, 9, 10, 11, 100});
  Button("ConfigBtn").click();
  Press("SendCmdBtn");
  EXPECT_EQ(Held(), (Values{7, 8, 9, 10, 11, 13}));
}

TEST_F(ConfigFrame, KeepsThePersonsValuesAndBoxesSilentWhenTheBoardRefuses) {
  // Going online reads five answers before the parameters' six bytes in three: 1 GetID, 2 and 3 GetSN, 4 to 6.
  Start("id=4389,fault=read:7");
  Button("ConfigBtn").click();
  Find<QSlider>("MotionThresholdSlider").setValue(99);
  Press("SendCmdBtn");
  EXPECT_EQ(Find<QSlider>("MotionThresholdSlider").value(), 99);
  EXPECT_EQ(agent->Board().State().resets, 0U);
  EXPECT_TRUE(dialogs.errors.empty());
  EXPECT_TRUE(dialogs.messages.empty());
  EXPECT_EQ(LabelText("HelpLabel"), "The board did not confirm the new values. Check its plug and send them again.");
}

TEST_F(ConfigFrame, HasAFlashPeriodFromRevision293On) {
  // USB2 boards have their revision above 4096; without a number of its own it is 293.
  for (const auto& [id, adjustable] :
       {std::pair{0, false}, std::pair{4096, false}, std::pair{8191, true}, std::pair{65535, true}}) {
    window.reset();
    Start("id=" + std::to_string(id));
    Button("ConfigBtn").click();
    EXPECT_EQ(Find<QSlider>("FOCTimeSlider").isEnabled(), adjustable) << id;
    EXPECT_EQ(Find<QLabel>("FOCTimeLabel").isEnabled(), adjustable) << id;
  }
}

TEST_F(ConfigFrame, SendsNothingToAnLedDriverThatHasTakenTheBoardsPlace) {
  Start("id=4389");
  Button("ConfigBtn").click();
  agent->Unplug();
  Tick("NoticeTimer");
  simulator::BoardState driver;
  driver.id = 4095;
  agent->Board() = simulator::VirtualBoard(driver);
  agent->Plug();
  Tick("NoticeTimer");
  Tick("GoOnlineTimer");
  ASSERT_TRUE(Shown("frmLED"));
  EXPECT_FALSE(Shown("ConfigFrame"));
  Press("SendCmdBtn");
  EXPECT_EQ(agent->Board().State(), driver);
}

TEST_F(ConfigFrame, SendsNothingWithoutABoard) {
  Start("id=4389");
  Button("ConfigBtn").click();
  agent->Unplug();
  Tick("NoticeTimer");
  Press("SendCmdBtn");
  EXPECT_EQ(LabelText("HelpLabel"), "No sound board is connected: nothing was sent.");
}

}  // namespace
}  // namespace kestrin::support
