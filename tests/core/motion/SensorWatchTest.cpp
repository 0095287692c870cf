// SPDX-License-Identifier: MIT
#include "core/motion/SensorWatch.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/FakeClock.h"
#include "support/ScriptedAgent.h"

namespace kestrin::core::motion {
namespace {

using namespace std::chrono_literals;

class SensorWatchTest : public ::testing::Test {
 protected:
  SensorWatchTest() {
    m_agent.Open(support::ScriptedAgent::BoardInterface(1));
    EXPECT_EQ(m_board.BindVars(m_agent), 0);
    m_clock.Advance(5s);
  }

  support::ScriptedAgent m_agent;
  device::TLS m_board;
  support::FakeClock m_clock;
  SensorWatch m_watch{m_board, m_clock};
};

TEST_F(SensorWatchTest, TellsWhatTheSensorFeelsAndWhen) {
  // A byte above 31 stands for 32 less it.
  m_agent.Answers({{33, 63}, {31, 200}, {0, 1}, {2, 3}});
  EXPECT_EQ(*m_watch.Read(), (SensorReading{0ms, -1, -31, 31, 200}));
  m_clock.Advance(41'900'000ns);
  EXPECT_EQ(*m_watch.Read(), (SensorReading{41ms, 0, 1, 2, 3}));
  ASSERT_EQ(m_agent.written.size(), 2U);
  EXPECT_EQ(m_agent.written[0][0], 40);
}

TEST_F(SensorWatchTest, AsksAtMost25TimesASecond) {
  EXPECT_EQ(m_watch.UntilNext(), 0ns);
  m_agent.Answers({{0, 0}, {0, 0}, {0, 0}, {0, 0}});
  static_cast<void>(m_watch.Read());
  EXPECT_EQ(m_watch.UntilNext(), 40ms) << "a 25th of a second";
  m_clock.Advance(39ms);
  EXPECT_EQ(m_watch.UntilNext(), 1ms);
  m_clock.Advance(1ms);
  EXPECT_EQ(m_watch.UntilNext(), 0ns);
  m_clock.Advance(60ms);
  EXPECT_EQ(m_watch.UntilNext(), 0ns);
  static_cast<void>(m_watch.Read());
  EXPECT_EQ(m_watch.UntilNext(), 40ms) << "what was missed is not made up for";
}

TEST_F(SensorWatchTest, TheTimeOfAQuestionIsWhenItWasAsked) {
  m_agent.whileReading = [this] { m_clock.Advance(100ms); };
  m_agent.Answers({{0, 0}, {0, 0}});
  EXPECT_EQ(m_watch.Read()->at, 0ms);
  EXPECT_EQ(m_watch.UntilNext(), 0ns);
}

TEST_F(SensorWatchTest, SaysWhenABoardDoesNotKnowTheQuestion) {
  const auto reading = m_watch.Read();
  ASSERT_FALSE(reading);
  EXPECT_EQ(reading.Why().kind, base::FailureKind::NoAnswer);
  EXPECT_EQ(reading.Text(), "This board does not tell what its sensor feels. All else works with it as before.");
  EXPECT_EQ(m_watch.UntilNext(), 40ms) << "it was a question all the same";
}

TEST_F(SensorWatchTest, SaysWhenABoardFallsSilent) {
  // Of the second answer only the first half comes.
  m_agent.Answers({{0, 0}, {0, 0}, {1, 1}});
  ASSERT_TRUE(m_watch.Read());
  const auto reading = m_watch.Read();
  ASSERT_FALSE(reading);
  EXPECT_EQ(reading.Text(), "The board no longer tells what its sensor feels. Check its plug and try again.");
}

}  // namespace
}  // namespace kestrin::core::motion
