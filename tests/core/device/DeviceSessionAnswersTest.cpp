// SPDX-License-Identifier: MIT
// Which answers the session believes, and what it does about those that it does not.

#include "DeviceSessionFixture.h"

namespace kestrin::core::device {
namespace {

using support::ScriptedAgent;
using ::testing::ElementsAre;

constexpr const char* kWait = "wait:The board is still busy, please wait ...";

TEST_F(DeviceSessionTest, TheAnswerOfAnEraseIsNoIdentity) {
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
  // That of the erase, that to the first question, and then nothing: only now is the second question asked.
  m_agent.answers = {{{10, 10}}, {{0, 64}}, std::nullopt, {{0, 64}}, {{0x4B, 0x53}}, {{0x54, 0x01}}};
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  EXPECT_EQ(m_session.State().id, 64);
  EXPECT_TRUE(m_session.State().IsIdentified());
  EXPECT_THAT(Codes(), ElementsAre(3, 3, 1));
  EXPECT_THAT(m_view.log, ::testing::Contains("ready:Kestrin USB 64 Serial Number: 4B535401"));
  EXPECT_THAT(m_view.log, ::testing::Not(::testing::Contains(kWait)));
}

TEST_F(DeviceSessionTest, ASilentBoardIsReadFromAsLongAsAnEraseTakesBeforeItIsAskedAgain) {
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
  m_agent.answers.assign(DeviceSession::kPatience, std::nullopt);
  const std::optional<ScriptedAgent::Answer> rest[] = {{{10, 10}}, {{0, 64}},      std::nullopt,
                                                       {{0, 64}},  {{0x4B, 0x53}}, {{0x54, 0x01}}};
  m_agent.answers.insert(m_agent.answers.end(), std::begin(rest), std::end(rest));
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  EXPECT_TRUE(m_session.State().IsIdentified());
  EXPECT_EQ(m_session.State().id, 64);
  EXPECT_THAT(Codes(), ElementsAre(3, 3, 1));
}

TEST_F(DeviceSessionTest, ABoardThatKeepsSilentIsNotIdentified) {
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  EXPECT_FALSE(m_session.State().knowsId);
  EXPECT_FALSE(m_session.State().IsIdentified());
  EXPECT_EQ(m_agent.readsTried, 1 + DeviceSession::kPatience);
  EXPECT_THAT(Codes(), ElementsAre(3)) << "another question would only be answered later still";
  EXPECT_FALSE(m_session.EnsureIdentified());
  EXPECT_EQ(m_session.State().Identified().Text(),
            "The board did not say what it is. Unplug it, plug it in again and repeat this.");
}

TEST_F(DeviceSessionTest, WhoDoesNotWaitGoesOfflineWithoutAQuestionAndTheTimerGoesOn) {
  m_view.waits = false;
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Offline);
  EXPECT_EQ(m_agent.readsTried, 1);
  EXPECT_THAT(m_view.log, ElementsAre("timer stopped", "identifying", kWait, "timer:1000", "offline"));
  AnswerEveryQuestion();
  m_session.GoOnlineTimerTick();
  EXPECT_TRUE(m_session.State().IsIdentified());
}

// Such a board holds up each question for seconds.
TEST_F(DeviceSessionTest, ABoardThatTakesNothingIsAskedOnceAndHearsNoGoodBye) {
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
  m_agent.failWrites = {1};
  AnswerEveryQuestion();
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  EXPECT_FALSE(m_session.State().knowsId);
  EXPECT_FALSE(m_session.EnsureIdentified());
  EXPECT_THAT(m_view.log, ::testing::Contains("wait:The board takes nothing."));
  m_session.Exit();
  EXPECT_EQ(m_agent.writesTried, 1);
  EXPECT_EQ(m_agent.readsTried, 0);
  EXPECT_TRUE(m_agent.stopped);
}

TEST_F(DeviceSessionTest, ABoardThatTookNothingComesOnlineWithTheTimer) {
  m_view.waits = false;
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
  m_agent.failWrites = {1, 2};
  AnswerEveryQuestion();
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Offline);
  EXPECT_EQ(m_agent.writesTried, 1);
  m_session.GoOnlineTimerTick();
  EXPECT_EQ(m_agent.writesTried, 2);
  EXPECT_FALSE(m_session.State().IsOnline());
  m_session.GoOnlineTimerTick();
  EXPECT_TRUE(m_session.State().IsIdentified());
  m_session.Exit();
  EXPECT_EQ(Codes().back(), 7);
}

TEST_F(DeviceSessionTest, ASerialNumberMovedUpByOneAnswerIsAskedForAgain) {
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
  // The first answer was for a program before this one, so every answer comes one read late: the identity begins the
  // serial number, then its second half does.
  m_agent.answers = {{{0, 64}},      {{0, 64}},    {{0x4B, 0x53}}, {{0x54, 0x01}}, {{0x4B, 0x53}},
                     {{0x54, 0x01}}, std::nullopt, {{0x4B, 0x53}}, {{0x54, 0x01}}};
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  EXPECT_EQ(m_session.State().serialNumber, "4B535401");
  EXPECT_THAT(Codes(), ElementsAre(3, 1, 1, 1));
}

TEST_F(DeviceSessionTest, ABoardThatNeverStopsTalkingIsNotIdentifiedAndHoldsNobodyUp) {
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
  m_agent.whileReading = [this] { m_agent.Answers({{10, 10}}); };
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  EXPECT_FALSE(m_session.State().IsIdentified());
  m_session.GoOffline();
  m_session.GoOnlineTimerTick();
  EXPECT_FALSE(m_session.State().IsOnline());
}

TEST_F(DeviceSessionTest, ATickTakesTheAnswerOfAnEraseForNoSerialNumber) {
  StartOnline(64);
  m_session.GoOffline();
  m_agent.answers = {{{10, 10}}, {{0x4B, 0x53}}, {{0x54, 0x01}}, std::nullopt,
                     {{0, 64}},  {{0x4B, 0x53}}, {{0x54, 0x01}}};
  m_session.GoOnlineTimerTick();
  EXPECT_EQ(m_session.State().id, 64);
  EXPECT_EQ(m_session.State().serialNumber, "4B535401");
}

TEST_F(DeviceSessionTest, ATickBehindASilentOneLetsTheAnswersToThatPassToo) {
  StartOnline(64);
  m_session.GoOffline();
  m_session.GoOnlineTimerTick();
  ASSERT_FALSE(m_session.State().IsOnline());
  // The answers to the tick before come only now, behind what was thrown away before the new question.
  m_agent.answers = {{{0x4B, 0x53}}, {{0x54, 0x01}}, {{0x4B, 0x53}}, {{0x54, 0x01}},
                     std::nullopt,   {{0, 64}},      {{0x4B, 0x53}}, {{0x54, 0x01}}};
  m_session.GoOnlineTimerTick();
  EXPECT_EQ(m_session.State().id, 64);
  EXPECT_EQ(m_session.State().serialNumber, "4B535401");
}

TEST_F(DeviceSessionTest, ATickLetsTheAnswersPassThatSomebodyElseHasAskedForInVain) {
  StartOnline(64);
  m_session.GoOffline();
  EXPECT_EQ(m_session.Board()->GetID(), 0);
  m_session.ExpectLateAnswer();
  // The identity comes only now, so that the serial number is moved up by one answer.
  m_agent.answers = {{{0, 64}}, {{0x4B, 0x53}}, {{0x54, 0x01}}, std::nullopt,
                     {{0, 64}}, {{0x4B, 0x53}}, {{0x54, 0x01}}};
  m_session.GoOnlineTimerTick();
  EXPECT_EQ(m_session.State().id, 64);
  EXPECT_EQ(m_session.State().serialNumber, "4B535401");
}

TEST_F(DeviceSessionTest, WhatSomebodyElseHasAskedInVainPassesBeforeSomethingIsSent) {
  StartOnline(64);
  EXPECT_EQ(m_session.Board()->GetID(), 0);
  m_session.ExpectLateAnswer();
  m_agent.answers = {{{0, 64}}};
  EXPECT_TRUE(m_session.EnsureIdentified());
  EXPECT_TRUE(m_agent.answers.empty());
  // Nothing is owed any more.
  m_agent.answers = {{{0, 64}}};
  EXPECT_TRUE(m_session.EnsureIdentified());
  EXPECT_EQ(m_agent.answers.size(), 1U);
}

TEST_F(DeviceSessionTest, NothingIsSentToABoardThatNeverStopsTalking) {
  StartOnline(64);
  EXPECT_EQ(m_session.Board()->GetID(), 0);
  m_session.ExpectLateAnswer();
  m_agent.answers.assign(300, support::ScriptedAgent::Answer{7, 7});
  EXPECT_EQ(m_session.EnsureIdentified().Text(),
            "The board answers what nobody has asked. Unplug it, plug it in and repeat this.");
}

TEST_F(DeviceSessionTest, ASerialNumberThatBeginsLikeTheAnswerOfAnEraseIsAskedForAgain) {
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
  m_agent.answers = {{{0, 64}},      {{10, 10}},   {{0x4B, 0x53}}, {{0x54, 0x01}}, {{0x4B, 0x53}},
                     {{0x54, 0x01}}, std::nullopt, {{0x4B, 0x53}}, {{0x54, 0x01}}};
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  EXPECT_EQ(m_session.State().serialNumber, "4B535401");
}

// --- The serial number ---

TEST_F(DeviceSessionTest, AMissingSerialNumberIsAskedForAgainWhenItIsNeeded) {
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
  m_agent.answers = {{{0, 64}}, {{0x4B, 0x53}}, std::nullopt};
  ASSERT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  ASSERT_EQ(m_view.log.back(), "ready:Kestrin USB 64 Serial Number: 4B53");
  EXPECT_FALSE(m_session.State().IsIdentified());

  m_agent.answers = {{{0x4B, 0x53}}, std::nullopt};
  EXPECT_FALSE(m_session.EnsureIdentified());
  EXPECT_EQ(m_session.State().Identified().Text(),
            "The board did not tell its whole serial number. Unplug it, plug it in again and repeat this.");
  AnswerEveryQuestion();
  EXPECT_TRUE(m_session.EnsureIdentified());
  EXPECT_EQ(m_session.State().Identified().Text(), "");
  EXPECT_EQ(m_session.State().serialNumber, "4B535401");
  EXPECT_EQ(m_view.log.back(), "ready:Kestrin USB 64 Serial Number: 4B535401");
  const std::size_t asked = m_agent.written.size();
  EXPECT_TRUE(m_session.EnsureIdentified());
  EXPECT_EQ(m_agent.written.size(), asked) << "nothing is missing";
}

TEST_F(DeviceSessionTest, WithoutABoardNothingIsIdentified) {
  EXPECT_EQ(m_session.EnsureIdentified().Text(), "No board is connected. Plug one in and repeat this.");
  StartOnline(64);
  EXPECT_TRUE(m_session.EnsureIdentified());
  m_session.GoOffline();
  EXPECT_FALSE(m_session.EnsureIdentified());
}

}  // namespace
}  // namespace kestrin::core::device
