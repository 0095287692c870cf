#pragma once

#include <cstdint>
#include <string>

namespace kestrin::core::device {

/// What the device session shows, and what it asks the rest of the program to do when a board comes or goes.
class SessionView {
 public:
  virtual ~SessionView() = default;

  /// The online picture: "LS_on.bmp" or "LS_off.bmp".
  virtual void ShowOnline(bool online) = 0;
  /// The serial label's text; "" offline.
  virtual void ShowSerialLabel(const std::string& text) = 0;
  /// The board holds that many samples: limit of the sound configuration and maximum of the memory gauge.
  virtual void SetMemoryCapacity(std::int32_t samples) = 0;
  /// `LoadBtn` and `SaveBtn` become usable, with their active pictures.
  virtual void EnableFileButtons() = 0;
  /// `ConfigBtn`, `SendBtn` and `UpdateBtn` become usable, or get their "_off" pictures and are disabled.
  virtual void EnableBoardButtons(bool enabled) = 0;
  /// The LED setup frame `frmLED`.
  virtual void ShowLedFrame(bool visible) = 0;
  /// A sound board is online: its detection parameters are to be read and shown.
  virtual void ReadAccData() = 0;
  /// An LED driver is online: its LED type, configuration and pulses are to be read and shown. False when that failed.
  [[nodiscard]] virtual bool InitLedDrivers() = 0;
  /// A critical message.
  virtual void ShowMessage(const std::string& text) = 0;
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
