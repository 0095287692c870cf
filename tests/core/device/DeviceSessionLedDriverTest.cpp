// SPDX-License-Identifier: MIT
// An LED driver that cannot be read: the person hears of each failure once, and the board is asked again when it may
// go better.

#include "DeviceSessionFixture.h"

namespace kestrin::core::device {
namespace {

using support::ScriptedAgent;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

const std::string kText = "Invalid LED configuration file. Check KestrinLEDS.ldcfg in the installation path !";
const base::Failure kOfCatalogue{base::FailureKind::NotValid, "line 7"};
const base::Failure kOfBoard{base::FailureKind::NoAnswer, "no answer"};

class DeviceSessionLedDriver : public DeviceSessionTest {
 protected:
  /// An LED driver, which fails so.
  void Start(const base::Failure& failure) {
    m_view.ledDriver = failure;
    m_agent.toOpen = {ScriptedAgent::BoardInterface(1)};
    m_agent.onWrite = [this](const std::vector<std::uint8_t>& report) {
      if (report[0] == 3) m_agent.Answers({{0, 100}});
      if (report[0] == 1) m_agent.Answers({{0x4B, 0x53}, {0x54, 0x01}});
    };
    ASSERT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Offline);
  }
  /// What the next tick brings.
  std::vector<std::string> Tick() {
    m_view.log.clear();
    m_session.GoOnlineTimerTick();
    return m_view.log;
  }
};

TEST_F(DeviceSessionLedDriver, ThatCannotBeReadGoesOfflineWithAMessage) {
  Start(kOfCatalogue);
  EXPECT_THAT(m_view.log,
              ElementsAre("timer stopped", "identifying", "reading:Kestrin LED Driver Serial Number: 4B535401",
                          "InitLedDrivers", "message:" + kText + ":line 7", "timer:1000", "offline"));
  EXPECT_FALSE(m_session.State().IsOnline());
  EXPECT_EQ(m_session.State().deviceType, DeviceType::LedDriver);
}

// The failure is that of the catalogue that was read, which is another by the time it is told.
TEST_F(DeviceSessionLedDriver, IsAskedAgainWhenTheCatalogueWasMendedWhileItWasRead) {
  m_view.meanwhile = [this] { m_view.catalogueStamp = "second"; };
  Start(kOfCatalogue);
  m_view.meanwhile = [] {};
  m_view.ledDriver = {};
  EXPECT_THAT(Tick(), Contains("ready:Kestrin LED Driver Serial Number: 4B535401"));
}

TEST_F(DeviceSessionLedDriver, IsLeftAloneUntilTheCatalogueHasChanged) {
  Start(kOfCatalogue);
  const std::size_t asked = m_agent.written.size();
  EXPECT_THAT(Tick(), IsEmpty());
  EXPECT_EQ(m_agent.written.size(), asked);
  m_view.catalogueStamp = "second";
  EXPECT_THAT(Tick(), Contains("message:" + kText + ":line 7")) << "another catalogue, another failure";
  EXPECT_THAT(Tick(), IsEmpty());
  m_view.catalogueStamp = "third";
  m_view.ledDriver = {};
  EXPECT_THAT(Tick(), Contains("ready:Kestrin LED Driver Serial Number: 4B535401"));
}

TEST_F(DeviceSessionLedDriver, ThatDidNotAnswerIsAskedWithEachTickAndToldOfOnce) {
  Start(kOfBoard);
  EXPECT_THAT(m_view.log, Contains("message:" + kText + ":no answer"));
  EXPECT_THAT(Tick(), ElementsAre("timer stopped", "identifying", "reading:Kestrin LED Driver Serial Number: 4B535401",
                                  "InitLedDrivers", "timer:1000", "offline"));
  m_view.ledDriver = kOfCatalogue;
  EXPECT_THAT(Tick(), Contains("message:" + kText + ":line 7")) << "something else is wrong now";
}

TEST_F(DeviceSessionLedDriver, ThatWentWellBetweenIsToldOfAgain) {
  Start(kOfBoard);
  m_view.ledDriver = {};
  static_cast<void>(Tick());
  ASSERT_TRUE(m_session.State().HasLedDriver());
  m_session.GoOffline();
  m_view.ledDriver = kOfBoard;
  EXPECT_THAT(Tick(), Contains("message:" + kText + ":no answer"));
}

TEST_F(DeviceSessionLedDriver, ThatIsAnotherBoardIsReadWithTheSameCatalogue) {
  Start(kOfCatalogue);
  m_agent.Close(1);
  m_agent.Open(ScriptedAgent::BoardInterface(2));
  EXPECT_THAT(Tick(), Contains("message:" + kText + ":line 7"));
}

TEST_F(DeviceSessionLedDriver, IsNotReadWhereNobodyWantsToKnow) {
  RecordingSession view;
  DeviceSession session(m_agent, view);
  m_agent.Open(ScriptedAgent::BoardInterface(1));
  m_agent.Answers({{0, 100}, {0x4B, 0x53}, {0x54, 0x01}});
  session.GoOnline();
  EXPECT_TRUE(session.State().HasLedDriver());
  EXPECT_THAT(view.log, Not(Contains("InitLedDrivers")));
}

}  // namespace
}  // namespace kestrin::core::device
