// SPDX-License-Identifier: MIT
#include "DeviceSessionFixture.h"

namespace kestrin::core::device {
namespace {

using support::ScriptedAgent;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kQuestion =
    "ask:A connection with Kuskekpize could not be established.\r\n"
    " Press OK to work offline or Cancel to exit the application";

TEST_F(DeviceSessionTest, SearchesForTheBoardsIdsOnly) {
  StartOnline(0);
  EXPECT_TRUE(m_agent.started);
  EXPECT_EQ(m_agent.match.VID_To_Match, 1240);
  EXPECT_EQ(m_agent.match.PID_To_Match, 64055);
  EXPECT_TRUE(m_agent.match.SearchOnVID);
  EXPECT_TRUE(m_agent.match.SearchOnPID);
  EXPECT_EQ(m_agent.searches, 1);
}

TEST_F(DeviceSessionTest, ASoundBoardComesOnlineStepByStep) {
  StartOnline(64);
  EXPECT_THAT(m_view.log, ElementsAre("timer stopped", "identifying", "reading:Kestrin USB 64 Serial Number: 4B535401",
                                      "ReadAccData", "ready:Kestrin USB 64 Serial Number: 4B535401"));
  const SessionState& state = m_session.State();
  EXPECT_EQ(state, m_view.state);
  EXPECT_TRUE(state.IsOnline());
  EXPECT_TRUE(state.HasSoundBoard());
  EXPECT_FALSE(state.HasLedDriver());
  EXPECT_EQ(state.deviceType, DeviceType::SoundBoard);
  EXPECT_EQ(state.memoryCapacity, 5589300);
  EXPECT_EQ(state.id, 64);
  EXPECT_EQ(state.serialNumber, "4B535401");
  EXPECT_EQ(state.boards, 1U);
  ASSERT_EQ(m_agent.written.size(), 2u);
  EXPECT_EQ(m_agent.written[0][0], 3);
  EXPECT_EQ(m_agent.written[1][0], 1);
}

TEST_F(DeviceSessionTest, AnLedDriverComesOnlineStepByStepAndIsNoSoundBoard) {
  StartOnline(100);
  EXPECT_THAT(m_view.log,
              ElementsAre("timer stopped", "identifying", "reading:Kestrin LED Driver Serial Number: 4B535401",
                          "InitLedDrivers", "ready:Kestrin LED Driver Serial Number: 4B535401"));
  EXPECT_EQ(m_session.State().deviceType, DeviceType::LedDriver);
  EXPECT_TRUE(m_session.State().HasLedDriver());
  EXPECT_FALSE(m_session.State().HasSoundBoard());
  EXPECT_EQ(m_session.State().memoryCapacity, 2793120) << "unchanged";
}

TEST_F(DeviceSessionTest, ABoardCannotBeUsedBeforeItHasBeenRead) {
  StartOnline(64);
  for (const auto stage : {SessionState::Stage::Offline, SessionState::Stage::Identifying, SessionState::Stage::Reading,
                           SessionState::Stage::Ready}) {
    SessionState state = m_session.State();
    state.stage = stage;
    EXPECT_EQ(state.HasSoundBoard(), stage == SessionState::Stage::Ready);
    EXPECT_EQ(state.IsOnline(), stage != SessionState::Stage::Offline);
    state.deviceType = DeviceType::LedDriver;
    EXPECT_FALSE(state.HasSoundBoard());
    EXPECT_EQ(state.HasLedDriver(), stage != SessionState::Stage::Offline);
  }
}

TEST_F(DeviceSessionTest, ABoardThatIsPulledOutWhileItIsReadStaysOffline) {
  for (const std::uint16_t id : {std::uint16_t{64}, std::uint16_t{100}}) {
    m_view.meanwhile = [this] {
      m_agent.Close(1);
      m_session.DeviceRemoved(1, "path");
    };
    m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
    AnswerIdentity(id);
    EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Offline) << id;
    EXPECT_EQ(m_session.State().stage, SessionState::Stage::Offline) << id;
    EXPECT_EQ(m_view.log.back(), "offline") << id;
  }
}

struct RevisionCase {
  std::uint16_t id;
  DeviceType type;
  int revision;
};

TEST_F(DeviceSessionTest, TypeAndRevisionFollowTheIdentity) {
  const RevisionCase cases[] = {
      {4095, DeviceType::LedDriver, 0},    {4096, DeviceType::SoundBoard, 0},    {8191, DeviceType::SoundBoard, 4095},
      {8192, DeviceType::LedDriver, 0},    {65535, DeviceType::SoundBoard, 293}, {0, DeviceType::SoundBoard, 0},
      {4389, DeviceType::SoundBoard, 293},
  };
  for (const RevisionCase& c : cases) {
    ScriptedAgent agent;
    RecordingSession view;
    DeviceSession session(agent, view);
    agent.Open(ScriptedAgent::BoardInterface(1));
    agent.Answers({{static_cast<std::uint8_t>(c.id >> 8), static_cast<std::uint8_t>(c.id)}, {0, 0}, {0, 0}});
    session.GoOnline();
    EXPECT_EQ(session.State().deviceType, c.type) << c.id;
    EXPECT_EQ(session.State().deviceRevision, c.revision) << c.id;
  }
}

TEST_F(DeviceSessionTest, ABoardWithOneSerialReportShowsFourDigits) {
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
  m_agent.Answers({{0, 0}, {0x0A, 0x01}});
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  EXPECT_THAT(m_view.log, ::testing::Contains("ready:Kestrin USB Serial Number: 0A01"));
}

TEST_F(DeviceSessionTest, ABoardThatNeverAnswersShowsNoSerialNumberBehindTheCaption) {
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  EXPECT_THAT(m_view.log, ::testing::Contains("ready:Kestrin USB Serial Number: NoSerialNumber"));
}

TEST_F(DeviceSessionTest, ABoardIsIdentifiedOnceIdentityAndWholeSerialNumberCame) {
  const struct {
    std::deque<std::optional<ScriptedAgent::Answer>> answers;
    bool identified;
  } cases[] = {
      {{{{0, 0}}, {{1, 2}}, {{3, 4}}}, true},
      {{std::nullopt, {{1, 2}}, {{3, 4}}}, false},
      {{{{0, 0}}, std::nullopt}, false},
      {{{{0, 0}}, {{1, 2}}, std::nullopt}, false},
  };
  for (const auto& c : cases) {
    ScriptedAgent agent;
    RecordingSession view;
    DeviceSession session(agent, view);
    agent.Open(ScriptedAgent::BoardInterface(1));
    agent.answers = c.answers;
    session.GoOnline();
    EXPECT_EQ(session.State().IsIdentified(), c.identified);
  }
}

TEST_F(DeviceSessionTest, WithoutABoardThePersonDecides) {
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Offline);
  EXPECT_THAT(m_view.log, ElementsAre("timer:1000", "offline", kQuestion));
  m_view.workOffline = false;
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Quit);
}

TEST_F(DeviceSessionTest, ABoardThatMayNotBeOpenedIsToldApart) {
  m_agent.accessProblem = "/dev/hidraw3 may not be opened";
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Offline);
  EXPECT_EQ(m_view.advice, "/dev/hidraw3 may not be opened");
}

TEST_F(DeviceSessionTest, AForeignDeviceIsNoBoard) {
  ScriptedAgent::Interface foreign = ScriptedAgent::BoardInterface(1);
  foreign.productId = 1;
  m_agent.toOpen = {foreign};
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Offline);
  EXPECT_EQ(m_session.Board(), nullptr);
  EXPECT_EQ(m_view.log.back(), kQuestion) << "an interface is open, but it is no board's";
}

// What a device may lack that has a board's numbers but is none.
const std::vector<std::vector<ScriptedAgent::Variable>> kNotABoard{
    {},
    {{ReportType::Output, 1, 0xFF00, 0, {}}},
    {{ReportType::Input, 2, 0xFF00, 0, {}}},
    {{ReportType::Output, 2, 0xFF00, 0, {}}, {ReportType::Input, 1, 0xFF00, 1, {}}},
    {{ReportType::Output, 1, 0xFF01, 0, {}}, {ReportType::Input, 2, 0xFF01, 1, {}}},
};

constexpr const char* kPassedOver =
    "The device at scripted has the numbers of a Kestrin board but not its reports, so it is left alone. If it should "
    "be a board, plug it in again or ask its maker.";

TEST_F(DeviceSessionTest, ADeviceWithoutABoardsVariablesIsNamedAndLeftAlone) {
  for (const auto& variables : kNotABoard) {
    ScriptedAgent agent;
    RecordingSession view;
    DeviceSession session(agent, view);
    agent.toOpen = {{1, kBoardVendorId, kBoardProductId, variables}};
    EXPECT_EQ(session.SearchAtStartUp(), DeviceSession::StartUp::Offline);
    EXPECT_EQ(session.Board(), nullptr);
    EXPECT_EQ(session.State().boards, 0u);
    EXPECT_EQ(session.State().passedOver, kPassedOver);
    EXPECT_EQ(view.advice, kPassedOver);
    session.GoOnlineTimerTick();
    session.Exit();
    EXPECT_TRUE(agent.written.empty());
  }
}

TEST_F(DeviceSessionTest, ADeviceWithoutABoardsVariablesShadowsNoBoard) {
  for (const auto& variables : kNotABoard) {
    for (const bool before : {true, false}) {
      ScriptedAgent agent;
      RecordingSession view;
      DeviceSession session(agent, view);
      agent.toOpen = {ScriptedAgent::BoardInterface(7), ScriptedAgent::BoardInterface(8)};
      agent.toOpen.insert(before ? agent.toOpen.begin() : agent.toOpen.end(),
                          {6, kBoardVendorId, kBoardProductId, variables});
      agent.Answers({{0, 64}, {0x4B, 0x53}, {0x54, 0x01}});
      EXPECT_EQ(session.SearchAtStartUp(), DeviceSession::StartUp::Online);
      EXPECT_EQ(session.State().serialNumber, "4B535401");
      EXPECT_EQ(session.State().boards, 2u);
      EXPECT_EQ(session.State().passedOver, kPassedOver);
      EXPECT_TRUE(session.Board()->HasHandle(7)) << "the first of the boards";
      agent.Close(7);
      EXPECT_TRUE(session.Board()->HasHandle(8));
      agent.Close(6);
      session.LookForNotices();
      EXPECT_EQ(session.State().passedOver, "");
    }
  }
}

TEST_F(DeviceSessionTest, WhyABoardMayNotBeOpenedIsToldBeforeADeviceThatIsNone) {
  m_agent.accessProblem = "/dev/hidraw3 may not be opened";
  m_agent.toOpen = {{1, kBoardVendorId, kBoardProductId, {}}};
  EXPECT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Offline);
  EXPECT_EQ(m_view.advice, "/dev/hidraw3 may not be opened");
}

TEST_F(DeviceSessionTest, OfflineItIsKnownStillWhatTheLastBoardWas) {
  for (const std::uint8_t id : {std::uint8_t{0}, std::uint8_t{100}}) {
    ScriptedAgent agent;
    RecordingSession view;
    DeviceSession session(agent, view, &view);
    agent.Open(ScriptedAgent::BoardInterface(1));
    agent.Answers({{0, id}, {0x4B, 0x53}, {0x54, 0x01}});
    session.GoOnline();
    const DeviceType before = session.State().deviceType;
    view.log.clear();
    session.DeviceRemoved(1, "scripted");
    EXPECT_THAT(view.log, ElementsAre("timer:1000", "offline"));
    EXPECT_FALSE(session.State().IsOnline());
    EXPECT_FALSE(session.State().HasSoundBoard() || session.State().HasLedDriver());
    EXPECT_EQ(session.State().deviceType, before);
    EXPECT_EQ(session.State().serialNumber, "4B535401");
  }
}

TEST_F(DeviceSessionTest, BoardsThatComeAndGoAreToldWithTheNextLook) {
  StartOnline(0);
  m_agent.Open(ScriptedAgent::BoardInterface(2));
  m_session.LookForNotices();
  EXPECT_EQ(m_view.state->boards, 2U);
  m_agent.Close(2);
  m_session.LookForNotices();
  EXPECT_EQ(m_view.state->boards, 1U);
  EXPECT_EQ(m_agent.refreshes, 2);
  m_view.log.clear();
  m_session.LookForNotices();
  EXPECT_THAT(m_view.log, IsEmpty());
}

TEST_F(DeviceSessionTest, WhyABoardCannotBeOpenedIsToldAsLongAsItCannot) {
  static_cast<void>(m_session.SearchAtStartUp());
  m_agent.accessProblem = "/dev/hidraw3 may not be opened";
  m_session.GoOnlineTimerTick();
  EXPECT_EQ(m_view.state->accessProblem, "/dev/hidraw3 may not be opened");
  m_agent.Open(ScriptedAgent::BoardInterface(1));
  m_session.LookForNotices();
  EXPECT_EQ(m_view.state->accessProblem, "") << "there is one that could";
}

TEST_F(DeviceSessionTest, ATickGoesOnlineOnceTheBoardAnswers) {
  StartOnline(0);
  m_session.GoOffline();
  m_session.GoOnlineTimerTick();
  EXPECT_FALSE(m_session.State().IsOnline()) << "no answer yet";
  AnswerEveryQuestion();
  m_session.GoOnlineTimerTick();
  EXPECT_TRUE(m_session.State().IsOnline());
  EXPECT_EQ(m_view.log.back(), "ready:Kestrin USB Serial Number: 4B535401");
  EXPECT_TRUE(m_session.State().IsIdentified());
  EXPECT_EQ(m_agent.refreshes, 2);
}

TEST_F(DeviceSessionTest, ATickAsksForTheSerialNumberAndThenGoesOnline) {
  StartOnline(0);
  m_session.GoOffline();
  m_agent.written.clear();
  AnswerEveryQuestion();
  m_session.GoOnlineTimerTick();
  EXPECT_TRUE(m_session.State().IsIdentified());
  EXPECT_THAT(Codes(), ElementsAre(1, 3, 1));
}

TEST_F(DeviceSessionTest, ATickWithoutAnyBoardEndsQuietly) {
  m_session.GoOffline();
  m_view.log.clear();
  EXPECT_NO_THROW(m_session.GoOnlineTimerTick());
  EXPECT_THAT(m_view.log, IsEmpty());
}

TEST_F(DeviceSessionTest, AClosedInterfaceDropsItsBoardAndRebindsTheOthers) {
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1), ScriptedAgent::BoardInterface(2)};
  AnswerIdentity(0);
  ASSERT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  ASSERT_EQ(m_session.State().boards, 2u);
  m_agent.Close(1);
  ASSERT_EQ(m_session.State().boards, 1u);
  EXPECT_TRUE(m_session.Board()->HasHandle(2));
  const std::size_t before = m_agent.written.size();
  EXPECT_TRUE(m_session.Board()->Bye());
  EXPECT_EQ(m_agent.written.size(), before + 1);
  m_agent.Close(2);
  EXPECT_EQ(m_session.Board(), nullptr);
}

TEST_F(DeviceSessionTest, OfSeveralBoardsEverythingGoesToTheFirst) {
  m_agent.toOpen = {ScriptedAgent::BoardInterface(1), ScriptedAgent::BoardInterface(2)};
  AnswerIdentity(0);
  ASSERT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  ASSERT_TRUE(m_session.Board()->Bye());
  EXPECT_THAT(m_agent.writtenTo, ElementsAre(1, 1, 1));
  m_agent.Close(1);
  ASSERT_TRUE(m_session.Board()->Bye());
  EXPECT_EQ(m_agent.writtenTo.back(), 2);
}

TEST_F(DeviceSessionTest, UnpluggedAndPluggedInAgainItComesBackByItself) {
  StartOnline(0);
  m_agent.Close(1);
  m_session.DeviceRemoved(1, "scripted");
  m_session.GoOnlineTimerTick();
  EXPECT_FALSE(m_session.State().IsOnline());
  m_agent.toOpen = {ScriptedAgent::BoardInterface(2)};
  m_session.DeviceArrival("scripted");
  EXPECT_EQ(m_agent.searches, 2);
  m_agent.Answers({{0x4B, 0x53}, {0x54, 0x01}});
  AnswerIdentity(0);
  m_session.GoOnlineTimerTick();
  EXPECT_TRUE(m_session.State().IsOnline());
}

TEST_F(DeviceSessionTest, WhileLoadingAnArrivalDoesNotSearch) {
  m_session.SetLoading(true);
  m_session.DeviceArrival("scripted");
  EXPECT_EQ(m_agent.searches, 0);
  m_session.SetLoading(false);
  m_session.DeviceArrival("scripted");
  EXPECT_EQ(m_agent.searches, 1);
}

TEST_F(DeviceSessionTest, ReportsThatArriveAndTimeOutsHaveNoEffect) {
  StartOnline(0);
  m_view.log.clear();
  const int reads = m_agent.readsTried;
  m_session.ReportArrived(1, 1);
  m_session.ReportTimedOut(1, 1);
  EXPECT_THAT(m_view.log, IsEmpty());
  EXPECT_EQ(m_agent.readsTried, reads);
}

TEST_F(DeviceSessionTest, AnotherInterfaceOfAHalfBoundBoardIsBoundToIt) {
  // The same interface is announced again after its descriptor was read only in part.
  m_agent.Open({5, kBoardVendorId, kBoardProductId, {{ReportType::Output, 1, 0xFF00, 0, {}}}});
  ASSERT_EQ(m_session.State().boards, 0u);
  m_agent.interfaces = {ScriptedAgent::BoardInterface(5)};
  m_session.InterfaceOpened(5, 2, 1028, "scripted");
  EXPECT_EQ(m_session.State().boards, 1u);
  EXPECT_EQ(m_session.Board()->UnboundVarCount(), 0);
}

TEST_F(DeviceSessionTest, ABoardThatFollowsAnInterfaceWithoutTheVariablesIsTheOneThatIsUsed) {
  for (const bool closedBefore : {true, false}) {
    ScriptedAgent agent;
    RecordingSession view;
    DeviceSession session(agent, view);
    agent.Open({5, kBoardVendorId, kBoardProductId, {}});
    ASSERT_EQ(session.Board(), nullptr);
    if (closedBefore) agent.Close(5);
    agent.Open(ScriptedAgent::BoardInterface(6));
    ASSERT_EQ(session.State().boards, 1u);
    ASSERT_TRUE(session.Board()->HasHandle(6));
    agent.onWrite = [&agent](const std::vector<std::uint8_t>& report) {
      if (report[0] == 3) agent.Answers({{0, 64}});
      if (report[0] == 1) agent.Answers({{0x4B, 0x53}, {0x54, 0x01}});
    };
    session.GoOnlineTimerTick();
    ASSERT_TRUE(session.State().IsIdentified());
    EXPECT_EQ(agent.writtenTo.back(), 6);
    // The empty interface that goes later takes nothing along.
    if (!closedBefore) agent.Close(5);
    ASSERT_EQ(session.State().boards, 1u);
    EXPECT_TRUE(session.Board()->Bye());
    agent.Close(6);
    EXPECT_EQ(session.Board(), nullptr);
  }
}

TEST_F(DeviceSessionTest, AHalfBoundBoardIsNotTakenForAnotherInterface) {
  m_agent.Open({5, kBoardVendorId, kBoardProductId, {{ReportType::Output, 1, 0xFF00, 0, {}}}});
  m_agent.Open(ScriptedAgent::BoardInterface(6));
  EXPECT_EQ(m_session.State().boards, 1u);
  EXPECT_TRUE(m_session.Board()->HasHandle(6));
  EXPECT_FALSE(m_session.Board()->HasHandle(5));
}

TEST_F(DeviceSessionTest, BoardsAreBoundAnewWhenAnInterfaceClosesSinceNumbersMayHaveChanged) {
  m_agent.Open(ScriptedAgent::BoardInterface(1));
  m_agent.Open({2, kBoardVendorId, kBoardProductId, {}});
  m_agent.Open(ScriptedAgent::BoardInterface(3));
  m_agent.Open(ScriptedAgent::BoardInterface(4));
  // The stack has read the third interface's descriptor anew: other numbers, the same fields.
  m_agent.interfaces[2].variables = {{ReportType::Feature, 5, 0xFF00, 4, {}},
                                     {ReportType::Input, 2, 0xFF00, 6, {}},
                                     {ReportType::Output, 1, 0xFF00, 5, {}}};
  m_agent.Close(1);
  ASSERT_TRUE(m_session.Board()->HasHandle(3));
  EXPECT_EQ(m_session.Board()->CommandVariable().RptIndex(), 5);
  EXPECT_EQ(m_session.Board()->ResponseVariable().RptIndex(), 6);
  m_agent.Answers({{0x4B, 0x53}, {0x54, 0x01}});
  ASSERT_EQ(m_session.Board()->GetSN(), "4B535401");
  EXPECT_EQ(m_agent.writtenTo.back(), 3);
  EXPECT_EQ(m_agent.currentReport, 6);
}

TEST_F(DeviceSessionTest, ExitSaysGoodByeWhateverTheState) {
  StartOnline(0);
  m_session.GoOffline();
  m_session.Exit();
  EXPECT_EQ(m_agent.written.back()[0], 7);
  EXPECT_FALSE(m_agent.hurried) << "a board that is well has the time to take it";
  EXPECT_TRUE(m_agent.stopped);
}

TEST_F(DeviceSessionTest, ExitWithoutABoardOnlyStops) {
  m_session.Exit();
  EXPECT_TRUE(m_agent.written.empty());
  EXPECT_TRUE(m_agent.stopped);
}

}  // namespace
}  // namespace kestrin::core::device
