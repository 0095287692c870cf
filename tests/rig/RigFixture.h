// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "core/device/TLS.h"
#include "platform/hid/HidAgent.h"
#include "rig/MockBoard.h"
#include "rig/MockHost.h"
#include "simulator/VirtualBoard.h"
#include "support/BoardIds.h"
#include "support/FakeClock.h"
#include "support/RecordedAgentEvents.h"

namespace kestrin::rig {

/// The agent as the programs use it, over a mocked device with the board's firmware behind it. Every turn of the event
/// pump moves the clock by a second, so that a wait in vain takes three short slices instead of three seconds.
class RigFixture : public testing::Test {
 protected:
  using Bytes = MockBoard::Bytes;
  using Lines = std::vector<std::string>;

  RigFixture() { mock.AnswerWith(board); }

  void CreateAgent(const std::string& onlyPath = "") {
    agent = platform::hid::CreateHidAgent(clock, {[this] { Turn(); }, onlyPath});
    agent->SetEvents(&events);
    agent->Start();
    agent->SetMatch(BoardMatch());
  }
  [[nodiscard]] static core::device::HidMatch BoardMatch() {
    core::device::HidMatch match;
    match.VID_To_Match = support::kVendorId;
    match.PID_To_Match = support::kProductId;
    match.SearchOnVID = true;
    match.SearchOnPID = true;
    return match;
  }
  /// A plugged board, found and bound.
  void GoOnline(int number = 0) {
    mock.Plug(number);
    CreateAgent();
    ASSERT_TRUE(agent->SearchAndOpen()) << agent->AccessProblem();
    ASSERT_EQ(tls.BindVars(*agent), 0);
    events.lines.clear();
  }
  void Turn() {
    ++turns;
    if (onTurn) onTurn();
    clock.Advance(turnTime);
  }

  MockHost host;
  simulator::VirtualBoard board;
  MockBoard mock{host};
  support::FakeClock clock;
  core::base::Clock::Duration turnTime = std::chrono::seconds(1);
  support::RecordedAgentEvents events;
  std::function<void()> onTurn;
  int turns = 0;
  std::unique_ptr<core::device::THIDagent> agent;
  core::device::TLS tls;
};

}  // namespace kestrin::rig
