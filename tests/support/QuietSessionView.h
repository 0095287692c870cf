#pragma once

#include <string>

#include "core/device/SessionView.h"

namespace kestrin::support {

/// A session nobody looks at: works offline when asked, has no LED panel.
class QuietSessionView final : public core::device::SessionView {
 public:
  void ShowOnline(bool) override {}
  void ShowSerialLabel(const std::string&) override {}
  void SetMemoryCapacity(std::int32_t) override {}
  void EnableFileButtons() override {}
  void EnableBoardButtons(bool) override {}
  void ShowLedFrame(bool) override {}
  void ReadAccData() override {}
  [[nodiscard]] bool InitLedDrivers() override { return true; }
  void ShowMessage(const std::string&) override {}
  [[nodiscard]] bool AskWorkOffline(const std::string&, const std::string&) override { return true; }
  [[nodiscard]] bool WaitForBoard(const std::string&) override { return true; }
  void StartGoOnlineTimer(std::int32_t) override {}
  void StopGoOnlineTimer() override {}
};

}  // namespace kestrin::support
