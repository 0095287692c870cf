// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/device/DeviceSession.h"
#include "support/ScriptedAgent.h"

namespace kestrin::core::device {

/// What people call that stage, with the serial label where there is one.
inline std::string TextOf(const SessionState& state) {
  constexpr const char* kStages[] = {"offline", "identifying", "reading", "ready"};
  const std::string stage = kStages[static_cast<int>(state.stage)];
  return state.serialLabel.empty() ? stage : stage + ":" + state.serialLabel;
}

/// Writes down what the session tells, asks and has read, in order.
class RecordingSession final : public SessionView, public BoardReader {
 public:
  std::vector<std::string> log;
  std::optional<SessionState> state;
  bool workOffline = true;
  base::Result<> ledDriver;
  std::string catalogueStamp = "first";
  bool waits = true;
  std::string advice;
  /// What happens while the board is read.
  std::function<void()> meanwhile = [] {};

  void ShowState(const SessionState& now) override {
    EXPECT_NE(now, state) << "nothing new";
    state = now;
    log.push_back(TextOf(now));
  }
  void ShowMessage(const std::string& text, const std::string& detail) override {
    log.push_back("message:" + text + ":" + detail);
  }
  bool AskWorkOffline(const std::string& question, const std::string& why) override {
    log.push_back("ask:" + question);
    advice = why;
    return workOffline;
  }
  bool WaitForBoard(const std::string& text) override {
    log.push_back("wait:" + text);
    return waits;
  }
  void StartGoOnlineTimer(std::int32_t milliseconds) override {
    log.push_back("timer:" + std::to_string(milliseconds));
  }
  void StopGoOnlineTimer() override { log.push_back("timer stopped"); }

  void ReadAccData() override {
    log.push_back("ReadAccData");
    meanwhile();
  }
  base::Result<> InitLedDrivers() override {
    log.push_back("InitLedDrivers");
    meanwhile();
    return ledDriver;
  }
  std::string CatalogueStamp() override { return catalogueStamp; }
};

class DeviceSessionTest : public ::testing::Test {
 protected:
  /// Makes the board answer GetID and GetSN.
  void AnswerIdentity(std::uint16_t id) {
    m_agent.Answers({{static_cast<std::uint8_t>(id >> 8), static_cast<std::uint8_t>(id)}, {0x4B, 0x53}, {0x54, 0x01}});
  }
  /// From now on the board answers each question when it is asked.
  void AnswerEveryQuestion() {
    m_agent.onWrite = [this](const std::vector<std::uint8_t>& report) {
      if (report[0] == 3) m_agent.Answers({{0, 0}});
      if (report[0] == 1) m_agent.Answers({{0x4B, 0x53}, {0x54, 0x01}});
    };
  }
  /// The codes of all commands that were written.
  [[nodiscard]] std::vector<int> Codes() const {
    std::vector<int> codes;
    for (const auto& report : m_agent.written) codes.push_back(report[0]);
    return codes;
  }
  void StartOnline(std::uint16_t id) {
    m_agent.toOpen = {support::ScriptedAgent::BoardInterface(1)};
    AnswerIdentity(id);
    ASSERT_EQ(m_session.SearchAtStartUp(), DeviceSession::StartUp::Online);
  }

  support::ScriptedAgent m_agent;
  RecordingSession m_view;
  DeviceSession m_session{m_agent, m_view, &m_view};
};

}  // namespace kestrin::core::device
