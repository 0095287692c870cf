#pragma once

#include <string>

#include "core/device/SessionView.h"

namespace kestrin::rig {

/// Remembers what the session shows; has no catalogue and goes on without a board.
class QuietSessionView final : public core::device::SessionView {
 public:
  std::string serialLabel;
  bool timerRuns = false;

  void ShowOnline(bool) override {}
  void ShowSerialLabel(const std::string& text) override { serialLabel = text; }
  void SetMemoryCapacity(std::int32_t) override {}
  void EnableFileButtons() override {}
  void EnableBoardButtons(bool) override {}
  void ShowLedFrame(bool) override {}
  void ReadAccData() override {}
  [[nodiscard]] bool InitLedDrivers() override { return false; }
  void ShowMessage(const std::string&) override {}
  [[nodiscard]] bool AskWorkOffline(const std::string&, const std::string&) override { return true; }
  [[nodiscard]] bool WaitForBoard(const std::string&) override { return true; }
  void StartGoOnlineTimer(std::int32_t) override { timerRuns = true; }
  void StopGoOnlineTimer() override { timerRuns = false; }
};

}  // namespace kestrin::rig
