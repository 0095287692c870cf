// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "core/device/SessionView.h"

namespace kestrin::support {

/// A session that nobody looks at, but that can be asked what was told last. Works offline when asked.
class QuietSessionView final : public core::device::SessionView {
 public:
  /// Whether it waits for a board that is busy.
  explicit QuietSessionView(bool waits = true) : m_waits(waits) {}

  core::device::SessionState state;
  std::string waitText;
  bool timerRuns = false;
  bool asked = false;

  void ShowState(const core::device::SessionState& now) override { state = now; }
  void ShowMessage(const std::string&, const std::string&) override {}
  [[nodiscard]] bool AskWorkOffline(const std::string&, const std::string&) override { return asked = true; }
  [[nodiscard]] bool WaitForBoard(const std::string& text) override {
    waitText = text;
    return m_waits;
  }
  void StartGoOnlineTimer(std::int32_t) override { timerRuns = true; }
  void StopGoOnlineTimer() override { timerRuns = false; }

 private:
  bool m_waits;
};

}  // namespace kestrin::support
