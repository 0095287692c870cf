// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/device/THIDagent.h"
#include "simulator/SimulatedAgent.h"
#include "simulator/VirtualBoard.h"

namespace kestrin::support {

using namespace std::chrono_literals;
using simulator::VirtualBoard;

/// The bytes of a command report: `head`, then what an earlier command might have left behind.
inline std::vector<std::uint8_t> CommandReport(const std::vector<int>& head) {
  std::vector<std::uint8_t> report(1028, 0xA5);
  std::size_t element = 0;
  for (const int byte : head) report[element++] = static_cast<std::uint8_t>(byte);
  return report;
}

/// Everything that the board has to say at `now`.
inline std::vector<VirtualBoard::Answer> AllAnswers(VirtualBoard& board, VirtualBoard::Time now = {}) {
  std::vector<VirtualBoard::Answer> answers;
  while (const auto answer = board.NextAnswer(now)) answers.push_back(*answer);
  return answers;
}

/// What the board answers to a command that it gets at `now`.
inline std::vector<VirtualBoard::Answer> Ask(VirtualBoard& board, const std::vector<int>& head,
                                             VirtualBoard::Time now = {}) {
  board.Receive(CommandReport(head), now);
  return AllAnswers(board, now);
}

using Answers = std::vector<VirtualBoard::Answer>;
inline const Answers kDone{{10, 10}};

/// Remembers events in words, in order.
class EventRecorder final : public core::device::HidAgentEvents {
 public:
  std::vector<std::string> events;

  void InterfaceOpened(std::int32_t handle, std::int32_t in, std::int32_t out, const std::string& path) override {
    Note("opened " + std::to_string(handle) + " " + std::to_string(in) + " " + std::to_string(out) + " " + path);
  }
  void InterfaceClosed(std::int32_t handle, const std::string& path) override {
    Note("closed " + std::to_string(handle) + " " + path);
  }
  void DeviceRemoved(std::int32_t handle, const std::string& path) override {
    Note("removed " + std::to_string(handle) + " " + path);
  }
  void DeviceArrival(const std::string& path) override { Note("arrival " + path); }
  void ReportArrived(std::int32_t, std::int32_t report) override { Note("report " + std::to_string(report)); }
  void ReportTimedOut(std::int32_t, std::int32_t report) override { Note("timeout " + std::to_string(report)); }

 private:
  void Note(std::string event) { events.push_back(std::move(event)); }
};

/// Opens the agent's interface and selects it, as a program does.
inline void OpenAndSelect(core::device::THIDagent& agent) {
  agent.Start();
  if (!agent.SearchAndOpen()) throw core::device::AgentError("the test found no board");
  agent.SelectInterface(0);
}

/// Writes a command report.
inline bool WriteCommand(core::device::THIDagent& agent, const std::vector<int>& head) {
  agent.SelectVariable(0);
  agent.SetElements(CommandReport(head));
  agent.SetCurrentRptNum(0);
  return agent.WriteReport();
}

/// Reads one answer report; empty when the read failed.
inline std::optional<VirtualBoard::Answer> ReadAnswer(core::device::THIDagent& agent) {
  agent.SetCurrentRptNum(1);
  if (!agent.ReadReport()) return std::nullopt;
  VirtualBoard::Answer answer{};
  agent.SelectVariable(1);
  agent.GetElements(answer);
  return answer;
}

}  // namespace kestrin::support
