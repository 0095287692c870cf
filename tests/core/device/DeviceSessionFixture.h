#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/device/DeviceSession.h"
#include "support/ScriptedAgent.h"

namespace kestrin::core::device {

/// Writes down what the session shows, in order.
class RecordingSessionView final : public SessionView {
 public:
  std::vector<std::string> log;
  bool workOffline = true;
  bool ledDriversValid = true;
  bool waits = true;
  std::string advice;

  void ShowOnline(bool online) override { log.push_back(online ? "LS_on" : "LS_off"); }
  void ShowSerialLabel(const std::string& text) override { log.push_back("serial:" + text); }
  void SetMemoryCapacity(std::int32_t samples) override { log.push_back("capacity:" + std::to_string(samples)); }
  void EnableFileButtons() override { log.push_back("load,save on"); }
  void EnableBoardButtons(bool enabled) override { log.push_back(enabled ? "board buttons on" : "board buttons off"); }
  void ShowLedFrame(bool visible) override { log.push_back(visible ? "frmLED shown" : "frmLED hidden"); }
  void ReadAccData() override { log.push_back("ReadAccData"); }
  bool InitLedDrivers() override {
    log.push_back("InitLedDrivers");
    return ledDriversValid;
  }
  void ShowMessage(const std::string& text) override { log.push_back("message:" + text); }
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
  RecordingSessionView m_view;
  DeviceSession m_session{m_agent, m_view};
};

}  // namespace kestrin::core::device
