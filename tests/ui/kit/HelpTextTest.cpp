// SPDX-License-Identifier: MIT
// What the help line says of a control, and the topic that it opens, are set together where the control is made.

#include <gtest/gtest.h>

#include <QWidget>

#include "ui/kit/HelpText.h"
#include "ui/kit/TopicOf.h"

namespace kestrin::ui::kit {
namespace {

TEST(SetHelp, GivesAControlItsTextAndItsTopic) {
  QWidget control;
  EXPECT_EQ(HelpTextOf(control), "");
  SetHelp(control, "Boils the water", HelpContext::Volume);
  EXPECT_EQ(HelpTextOf(control), "Boils the water");
  EXPECT_EQ(TopicOf(&control), HelpContext::Volume);
}

TEST(SetHelp, WithoutATopicLeavesThatOfWhatTheControlStandsIn) {
  QWidget frame;
  QWidget control(&frame);
  SetHelp(frame, "Makes tea", HelpContext::Slots);
  SetHelp(control, "Boils the water");
  EXPECT_EQ(HelpTextOf(control), "Boils the water");
  EXPECT_EQ(TopicOf(&control), HelpContext::Slots);
}

TEST(SetHelp, OfGroundIsThatOfTheWindow) {
  QWidget ground;
  SetHelpOfGround(ground);
  EXPECT_EQ(HelpTextOf(ground), "Press F1 for help");
  EXPECT_TRUE(IsGround(ground));
  QWidget withTopic;
  SetHelpOfGround(withTopic, HelpContext::Volume);
  EXPECT_TRUE(IsGround(withTopic));
  EXPECT_EQ(TopicOf(&withTopic), HelpContext::Volume);
}

TEST(SetHelp, DoesNotMakeGroundOfAControlThatSaysTheSame) {
  QWidget control;
  SetHelp(control, PressF1());
  EXPECT_FALSE(IsGround(control));
}

}  // namespace
}  // namespace kestrin::ui::kit
