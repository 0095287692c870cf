// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "device/SessionState.h"

namespace kestrin::core::device {

/// What the device session tells and asks. It says how things stand; what can be done then, and how that looks, is the
/// view's.
class SessionView {
 public:
  virtual ~SessionView() = default;

  /// How things stand now. Comes once at the beginning and then with each change.
  virtual void ShowState(const SessionState& state) = 0;
  /// A critical message; `detail` is "" or says what exactly is wrong.
  virtual void ShowMessage(const std::string& text, const std::string& detail) = 0;
  /// Asks with OK and Cancel whether to go on without a board; true for OK. `advice` is "" or says why a board that is
  /// there could not be opened and how to permit it.
  [[nodiscard]] virtual bool AskWorkOffline(const std::string& question, const std::string& advice) = 0;
  /// The board has been asked what it is and does not answer yet; `text` says so. True to wait for it here, as long as
  /// the longest erase takes; false to go offline and let the timer find it answering.
  [[nodiscard]] virtual bool WaitForBoard(const std::string& text) = 0;
  /// `GoOnlineTimer`: calls DeviceSession::GoOnlineTimerTick() every `milliseconds` until it is stopped.
  virtual void StartGoOnlineTimer(std::int32_t milliseconds) = 0;
  virtual void StopGoOnlineTimer() = 0;
};

}  // namespace kestrin::core::device
