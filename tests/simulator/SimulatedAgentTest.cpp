// SPDX-License-Identifier: MIT
#include "simulator/SimulatedAgent.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "SimulatorSupport.h"
#include "core/device/TLS.h"
#include "support/FakeClock.h"
#include "support/RecordedAgentEvents.h"

namespace kestrin::simulator {
namespace {

using core::device::AgentError;
using core::device::ReportType;
using support::OpenAndSelect;
using support::ReadAnswer;
using support::WriteCommand;
using namespace std::chrono_literals;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SimulatedAgentTest : public ::testing::Test {
 protected:
  /// An agent for "sim:OPTIONS".
  std::unique_ptr<SimulatedAgent> Make(const std::string& options = "", core::base::EventPump pump = {}) {
    auto agent = std::make_unique<SimulatedAgent>(*BoardOptions::Parse(options), m_clock, std::move(pump));
    agent->SetEvents(&m_recorder);
    return agent;
  }

  support::FakeClock m_clock;
  support::EventRecorder m_recorder;
};

TEST_F(SimulatedAgentTest, ASearchOpensOneInterfaceOnce) {
  const auto agent = Make();
  agent->Start();
  EXPECT_EQ(agent->NumberOfInterfaces(), 0);
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(agent->NumberOfInterfaces(), 1);
  EXPECT_THAT(m_recorder.events, ElementsAre("opened 1 2 1028 sim"));
  EXPECT_EQ(agent->AccessProblem(), "");
}

TEST_F(SimulatedAgentTest, ASearchHonoursTheFilter) {
  struct Row {
    core::device::HidMatch match;
    bool found;
  };
  const Row rows[] = {
      {{}, true},
      {{0x04D8, 0xFA37, true, true}, true},
      {{0x04D8, 1, true, false}, true},
      {{1, 0xFA37, false, true}, true},
      {{0x04D9, 0xFA37, true, true}, false},
      {{0x04D8, 0xFA38, true, true}, false},
  };
  for (const Row& row : rows) {
    const auto agent = Make();
    agent->Start();
    agent->SetMatch(row.match);
    EXPECT_EQ(agent->SearchAndOpen(), row.found) << row.match.VID_To_Match << " " << row.match.PID_To_Match;
    EXPECT_EQ(agent->NumberOfInterfaces(), row.found ? 1 : 0);
  }
}

TEST_F(SimulatedAgentTest, HasTheBoardsIdsAndVariables) {
  const auto agent = Make();
  OpenAndSelect(*agent);
  EXPECT_EQ(agent->VendorId(), 0x04D8);
  EXPECT_EQ(agent->ProductId(), 0xFA37);
  EXPECT_EQ(agent->InterfaceHandle(), 1);
  EXPECT_EQ(agent->FindVariable(ReportType::Output, 1, 0xFF00), 0);
  EXPECT_EQ(agent->FindVariable(ReportType::Input, 2, 0xFF00), 1);
  EXPECT_EQ(agent->FindVariable(ReportType::Input, 1, 0xFF00), -1);
  EXPECT_EQ(agent->FindVariable(ReportType::Output, 2, 0xFF00), -1);
  EXPECT_EQ(agent->FindVariable(ReportType::Feature, 1, 0xFF00), -1);
  EXPECT_EQ(agent->FindVariable(ReportType::Output, 1, 0xFF01), -1);
  for (const std::int32_t number : {0, 1}) {
    agent->SelectVariable(number);
    EXPECT_EQ(agent->VariableReportNumber(), number);
    const core::device::VariableAttributes attributes = agent->Attributes();
    EXPECT_EQ(attributes.SizeInBits, 8);
    EXPECT_EQ(attributes.LogicalMinimum, 0);
    EXPECT_EQ(attributes.LogicalMaximum, 255);
    EXPECT_TRUE(attributes.AbsoluteNotRelative);
    EXPECT_FALSE(attributes.ArrayNotVariable);
  }
}

TEST_F(SimulatedAgentTest, RaisesAnErrorForWhatItDoesNotHave) {
  const auto agent = Make();
  std::array<std::uint8_t, 2> two{};
  EXPECT_THROW(agent->SelectInterface(0), AgentError);
  OpenAndSelect(*agent);
  EXPECT_THROW(agent->SelectInterface(1), AgentError);
  EXPECT_THROW(agent->SelectInterface(-1), AgentError);
  EXPECT_THROW(agent->SelectVariable(2), AgentError);
  EXPECT_THROW(agent->SelectVariable(-1), AgentError);
  EXPECT_THROW(static_cast<void>(agent->VariableReportNumber()), AgentError) << "no variable selected yet";
  EXPECT_THROW(static_cast<void>(agent->Attributes()), AgentError);
  EXPECT_THROW(agent->SetElements(two), AgentError);
  EXPECT_THROW(agent->GetElements(two), AgentError);
  EXPECT_THROW(agent->SetVariableName("x"), AgentError);
  EXPECT_THROW(agent->SetVariableOption(1), AgentError);
  EXPECT_THROW(static_cast<void>(agent->UnScaledValue()), AgentError);

  agent->Stop();
  EXPECT_EQ(agent->NumberOfInterfaces(), 0);
  EXPECT_THROW(static_cast<void>(agent->VendorId()), AgentError);
  EXPECT_THROW(static_cast<void>(agent->ProductId()), AgentError);
  EXPECT_THROW(static_cast<void>(agent->InterfaceHandle()), AgentError);
  EXPECT_THROW(static_cast<void>(agent->FindVariable(ReportType::Output, 1, 0xFF00)), AgentError);
  EXPECT_THAT(m_recorder.events, ElementsAre("opened 1 2 1028 sim")) << "stopping raises no event";
}

TEST_F(SimulatedAgentTest, ElementsBeyondAFieldAreLeftOutAndReadZero) {
  const auto agent = Make();
  OpenAndSelect(*agent);
  agent->SelectVariable(1);
  agent->SetElements(std::array<std::uint8_t, 4>{1, 2, 3, 4});
  std::array<std::uint8_t, 4> values{9, 9, 9, 9};
  agent->GetElements(values);
  EXPECT_THAT(values, ElementsAre(1, 2, 0, 0));
  EXPECT_EQ(agent->UnScaledValue(), 1);
  EXPECT_EQ(agent->ScaledValue(), 1);
  agent->SetScaledValue(77);
  EXPECT_EQ(agent->UnScaledValue(), 77);
}

TEST_F(SimulatedAgentTest, ABoundBoardAnswersThroughIt) {
  const auto agent = Make("id=64,serial=0a0b0c0d");
  agent->Start();
  ASSERT_TRUE(agent->SearchAndOpen());
  core::device::TLS board;
  ASSERT_EQ(board.BindVars(*agent), 0);
  EXPECT_EQ(board.GetID(), 64);
  EXPECT_EQ(board.GetSN(), "0A0B0C0D");
  const std::vector<std::uint8_t> block(1024, 0x5A);
  EXPECT_TRUE(board.ClearFlash());
  EXPECT_TRUE(board.CheckCompletion());
  EXPECT_TRUE(board.Write1k(0x600000, block));
  EXPECT_EQ(agent->Board().Flash()[0x600000], 0x5A);
  core::device::AccParam parameters;
  EXPECT_TRUE(board.GetAccParam(parameters));
  EXPECT_EQ(parameters, (core::device::AccParam{255, 255, 255, 255, 255, 255}));
  EXPECT_EQ(m_clock.Now(), 0s) << "without wire time nothing takes any";
}

TEST_F(SimulatedAgentTest, OnlyTheRightReportMoves) {
  const auto agent = Make();
  OpenAndSelect(*agent);
  agent->SetCurrentRptNum(1);
  EXPECT_FALSE(agent->WriteReport());
  agent->SetCurrentRptNum(0);
  EXPECT_FALSE(agent->ReadReport());
  agent->SetCurrentRptNum(2);
  EXPECT_FALSE(agent->WriteReport());
  EXPECT_FALSE(agent->ReadReport());
  EXPECT_EQ(m_clock.Now(), 0s);
}

TEST_F(SimulatedAgentTest, AReadInVainWaitsItsWholeTimeInSlicesAndKeepsTheOldValue) {
  std::vector<core::base::Clock::Duration> turns;
  const auto agent = Make("", [&] { turns.push_back(m_clock.Now()); });
  OpenAndSelect(*agent);
  ASSERT_TRUE(WriteCommand(*agent, {3}));
  ASSERT_TRUE(ReadAnswer(*agent));
  m_recorder.events.clear();
  agent->SelectVariable(1);
  agent->SetElements(std::array<std::uint8_t, 2>{7, 8});

  EXPECT_FALSE(agent->ReadReport());

  EXPECT_EQ(m_clock.Now(), 3000ms);
  EXPECT_THAT(m_recorder.events, ElementsAre("timeout 1"));
  std::array<std::uint8_t, 2> values{};
  agent->GetElements(values);
  EXPECT_THAT(values, ElementsAre(7, 8));
  // A turn at least every 20 ms.
  core::base::Clock::Duration last{};
  for (const core::base::Clock::Duration turn : turns) {
    EXPECT_LE(turn - last, 20ms);
    last = turn;
  }
  EXPECT_EQ(last, 3000ms);
}

TEST_F(SimulatedAgentTest, AReadReturnsAtTheMomentTheEraseIsDone) {
  const auto agent = Make("erase=1.234");
  OpenAndSelect(*agent);
  ASSERT_TRUE(WriteCommand(*agent, {10}));
  EXPECT_EQ(ReadAnswer(*agent), (VirtualBoard::Answer{10, 10}));
  EXPECT_EQ(m_clock.Now(), 1234ms);
}

TEST_F(SimulatedAgentTest, AnEraseLongerThanAReadIsFoundByALaterRead) {
  const auto agent = Make("erase=7");
  OpenAndSelect(*agent);
  ASSERT_TRUE(WriteCommand(*agent, {10}));
  EXPECT_FALSE(ReadAnswer(*agent));
  EXPECT_FALSE(ReadAnswer(*agent));
  EXPECT_EQ(ReadAnswer(*agent), (VirtualBoard::Answer{10, 10}));
  EXPECT_EQ(m_clock.Now(), 7s);
  EXPECT_FALSE(ReadAnswer(*agent)) << "the erase is told once";
}

TEST_F(SimulatedAgentTest, AWriteThrowsAwayAnswersThatCameTooLate) {
  const auto agent = Make();
  OpenAndSelect(*agent);
  ASSERT_TRUE(WriteCommand(*agent, {41}));
  EXPECT_EQ(ReadAnswer(*agent), (VirtualBoard::Answer{180, 2}));
  ASSERT_TRUE(WriteCommand(*agent, {1}));
  EXPECT_EQ(ReadAnswer(*agent), (VirtualBoard::Answer{0x4B, 0x53}));
}

TEST_F(SimulatedAgentTest, TellsOfEveryReportThatWasRead) {
  const auto agent = Make();
  OpenAndSelect(*agent);
  ASSERT_TRUE(WriteCommand(*agent, {1}));
  ASSERT_TRUE(ReadAnswer(*agent));
  EXPECT_THAT(m_recorder.events, ElementsAre("opened 1 2 1028 sim", "report 1"));
}

TEST_F(SimulatedAgentTest, UnpluggingIsToldByTheNextRefreshAndNotBefore) {
  const auto agent = Make();
  OpenAndSelect(*agent);
  m_recorder.events.clear();
  agent->Unplug();
  EXPECT_FALSE(WriteCommand(*agent, {3}));
  EXPECT_FALSE(ReadAnswer(*agent));
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_EQ(m_clock.Now(), 0s) << "nothing waits for a board that is gone";
  EXPECT_THAT(m_recorder.events, IsEmpty());
  EXPECT_EQ(agent->NumberOfInterfaces(), 1);

  agent->Refresh();
  EXPECT_THAT(m_recorder.events, ElementsAre("closed 1 sim", "removed 1 sim"));
  EXPECT_EQ(agent->NumberOfInterfaces(), 0);
  EXPECT_FALSE(agent->SearchAndOpen());
  agent->Refresh();
  EXPECT_EQ(m_recorder.events.size(), 2U);
}

TEST_F(SimulatedAgentTest, ALookInsideAHandlerDoesNotMixTheEventsUp) {
  const auto agent = Make();
  OpenAndSelect(*agent);
  support::RecordedAgentEvents events;
  agent->SetEvents(&events);
  events.onClosed = [&](std::int32_t) { agent->Refresh(); };
  agent->Unplug();
  agent->Plug();
  agent->Refresh();
  EXPECT_THAT(events.lines, ElementsAre("closed 1 sim", "removed 1 sim", "arrival sim"));
}

TEST_F(SimulatedAgentTest, PluggingInIsToldAndTheBoardOpensUnderANewHandle) {
  const auto agent = Make();
  OpenAndSelect(*agent);
  agent->Unplug();
  agent->Refresh();
  m_recorder.events.clear();
  agent->Plug();
  agent->Refresh();
  EXPECT_THAT(m_recorder.events, ElementsAre("arrival sim"));
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_THAT(m_recorder.events, ElementsAre("arrival sim", "opened 2 2 1028 sim"));
  agent->SelectInterface(0);
  ASSERT_TRUE(WriteCommand(*agent, {3}));
  EXPECT_EQ(ReadAnswer(*agent), (VirtualBoard::Answer{0, 0}));
}

TEST_F(SimulatedAgentTest, AQuickReplugStillClosesTheOldInterfaceFirst) {
  const auto agent = Make();
  OpenAndSelect(*agent);
  m_recorder.events.clear();
  agent->Unplug();
  agent->Plug();
  EXPECT_FALSE(WriteCommand(*agent, {3})) << "the old interface does not come back to life";
  EXPECT_FALSE(agent->SearchAndOpen());
  agent->Refresh();
  EXPECT_THAT(m_recorder.events, ElementsAre("closed 1 sim", "removed 1 sim", "arrival sim"));
  EXPECT_TRUE(agent->SearchAndOpen());
}

TEST_F(SimulatedAgentTest, UnpluggingDuringAReadEndsItAtOnceAndIsToldAfterIt) {
  SimulatedAgent* running = nullptr;
  const auto agent = Make("", [&] {
    if (running == nullptr || m_clock.Now() < 100ms) return;
    running->Unplug();
    running->Refresh();
    EXPECT_THAT(m_recorder.events, IsEmpty()) << "no event in the middle of a transfer";
  });
  OpenAndSelect(*agent);
  m_recorder.events.clear();
  running = agent.get();
  EXPECT_FALSE(ReadAnswer(*agent));
  EXPECT_EQ(m_clock.Now(), 100ms);
  running = nullptr;
  agent->Refresh();
  EXPECT_THAT(m_recorder.events, ElementsAre("closed 1 sim", "removed 1 sim"));
}

TEST_F(SimulatedAgentTest, WatchesOnlyWhileStartedAndOnlyForWhatMatches) {
  const auto agent = Make();
  agent->Unplug();
  agent->Plug();
  agent->Refresh();
  EXPECT_THAT(m_recorder.events, IsEmpty());
  agent->Stop();
  agent->Start();
  agent->SetMatch({1, 2, true, true});
  agent->Unplug();
  agent->Plug();
  agent->Refresh();
  EXPECT_THAT(m_recorder.events, IsEmpty());
}

TEST_F(SimulatedAgentTest, AnUnpluggedBoardHasForgottenItsAnswersButNotItsState) {
  const auto agent = Make();
  OpenAndSelect(*agent);
  ASSERT_TRUE(WriteCommand(*agent, {42, 1, 2, 3, 4, 5, 6}));
  agent->Unplug();
  agent->Plug();
  agent->Refresh();
  OpenAndSelect(*agent);
  EXPECT_FALSE(ReadAnswer(*agent));
  EXPECT_THAT(agent->Board().State().accelerometer, ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST_F(SimulatedAgentTest, ReportsTakeTheirTimeOnTheWire) {
  const auto agent = Make("wire=usb");
  OpenAndSelect(*agent);
  ASSERT_TRUE(WriteCommand(*agent, {1}));
  EXPECT_EQ(m_clock.Now(), 17ms);
  ASSERT_TRUE(ReadAnswer(*agent));
  EXPECT_EQ(m_clock.Now(), 18ms);
  ASSERT_TRUE(ReadAnswer(*agent));
  EXPECT_EQ(m_clock.Now(), 19ms);
  EXPECT_FALSE(ReadAnswer(*agent)) << "what does not come takes no time on the wire";
  EXPECT_EQ(m_clock.Now(), 3019ms);
}

TEST_F(SimulatedAgentTest, AWholeFlashTakesExactlyItsWireTime) {
  const auto agent = Make("wire=usb");
  OpenAndSelect(*agent);
  for (int block = 0; block < 4096; ++block) {
    ASSERT_TRUE(WriteCommand(*agent, {20, block >> 6, (block & 0x3F) << 2, 0}));
    ASSERT_TRUE(ReadAnswer(*agent));
  }
  EXPECT_EQ(m_clock.Now(), 4096 * 18ms);
  // The rest of each command report is data.
  EXPECT_THAT(agent->Board().Flash(), Each(std::uint8_t{0xA5}));
}

TEST_F(SimulatedAgentTest, TheEraseBeginsWhenItsCommandHasArrived) {
  const auto agent = Make("wire=usb,erase=1");
  OpenAndSelect(*agent);
  ASSERT_TRUE(WriteCommand(*agent, {10}));
  ASSERT_TRUE(ReadAnswer(*agent));
  EXPECT_EQ(m_clock.Now(), 17ms + 1000ms + 1ms);
}

}  // namespace
}  // namespace kestrin::simulator
