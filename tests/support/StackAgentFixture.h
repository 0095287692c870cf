// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/hid/StackAgent.h"
#include "support/BoardDescriptors.h"
#include "support/BoardIds.h"
#include "support/FakeHidStack.h"
#include "support/RecordedAgentEvents.h"

namespace kestrin::support {

/// A StackAgent over a fake bus, looking for boards.
class StackAgentFixture : public testing::Test {
 protected:
  using Bytes = std::vector<std::uint8_t>;
  using Lines = std::vector<std::string>;

  static constexpr std::int32_t kPage = 0xFF00;

  void Create(core::base::EventPump pump = {}, const std::string& onlyPath = "") {
    agent = std::make_unique<platform::hid::StackAgent>(
        std::make_unique<FakeHidStack>(bus), [this] { return std::make_unique<FakeDeviceMonitor>(bus); }, bus.clock,
        std::move(pump), onlyPath);
    agent->SetEvents(&events);
    agent->Start();
    core::device::HidMatch match;
    match.VID_To_Match = kVendorId;
    match.PID_To_Match = kProductId;
    match.SearchOnVID = true;
    match.SearchOnPID = true;
    agent->SetMatch(match);
  }

  /// A plugged and opened board, its answer variable and report selected.
  FakeHidDevice& OpenBoard(Bytes descriptor = BoardDescriptor(), core::base::EventPump pump = {}) {
    FakeHidDevice& board = bus.Plug("/dev/hidraw0", std::move(descriptor));
    Create(std::move(pump));
    EXPECT_TRUE(agent->SearchAndOpen());
    agent->SelectInterface(0);
    SelectAnswer();
    events.lines.clear();
    return board;
  }
  void SelectAnswer() { Select(core::device::ReportType::Input, 2); }
  void SelectCommand() { Select(core::device::ReportType::Output, 1); }
  void Select(core::device::ReportType type, std::int32_t usage) {
    agent->SelectVariable(agent->FindVariable(type, usage, kPage));
    agent->SetCurrentRptNum(agent->VariableReportNumber());
  }
  [[nodiscard]] Bytes Answer() const {
    Bytes answer(2);
    agent->GetElements(answer);
    return answer;
  }

  FakeHidBus bus;
  RecordedAgentEvents events;
  std::unique_ptr<platform::hid::StackAgent> agent;
};

}  // namespace kestrin::support
