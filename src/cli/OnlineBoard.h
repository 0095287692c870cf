// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "cli/Command.h"
#include "cli/ProgressLine.h"
#include "core/base/Clock.h"
#include "core/device/DeviceSession.h"

namespace kestrin::cli {

/// The chosen board, online for as long as the object lives; says good-bye to it at the end.
class OnlineBoard {
 public:
  /// Throws CommandFailure when there is no such board or it may not be opened.
  explicit OnlineBoard(Context& context);
  ~OnlineBoard();
  OnlineBoard(const OnlineBoard&) = delete;
  OnlineBoard& operator=(const OnlineBoard&) = delete;

  /// The command is to end: a board that takes nothing holds it up no longer.
  void Hurry() { m_session.Hurry(); }

  [[nodiscard]] core::device::TLS& Board() { return *m_session.Board(); }
  [[nodiscard]] const core::device::SessionState& State() const { return m_session.State(); }
  /// Whether the board told its serial number.
  [[nodiscard]] bool Answered() const { return State().serialNumber != core::device::TLS::kNoSerialNumber; }
  /// Throws CommandFailure when the board did not say what it is.
  void RequireIdentity() const;
  /// Throws CommandFailure when the board did not say what it is, or is an LED driver.
  void RequireSoundBoard() const;
  /// Throws CommandFailure when the board did not say what it is, or is a sound board.
  void RequireLedDriver() const;
  /// Asks for the serial number again when it is missing. Whether the board has said what it is and which one.
  bool EnsureIdentified() { return static_cast<bool>(m_session.EnsureIdentified()); }
  /// Throws CommandFailure when the board has not said what it is and which one: then nothing is written to it. Asks
  /// for nothing.
  void RequireIdentified() const;

 private:
  /// The command line's session: it goes on with a board or not at all.
  class View final : public core::device::SessionView {
   public:
    /// `progress` must outlive the view.
    explicit View(ProgressLine& progress) : m_progress(progress) {}

    void ShowState(const core::device::SessionState&) override {}
    void ShowMessage(const std::string&, const std::string&) override {}
    [[nodiscard]] bool AskWorkOffline(const std::string&, const std::string&) override { return false; }
    [[nodiscard]] bool WaitForBoard(const std::string& text) override {
      m_progress.Phase(text);
      return true;
    }
    void StartGoOnlineTimer(std::int32_t) override {}
    void StopGoOnlineTimer() override {}

   private:
    ProgressLine& m_progress;
  };

  core::base::SystemClock m_clock;
  ProgressLine m_progress;
  std::unique_ptr<core::device::THIDagent> m_agent;
  View m_view;
  core::device::DeviceSession m_session;
};

}  // namespace kestrin::cli
