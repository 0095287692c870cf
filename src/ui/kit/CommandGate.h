// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <chrono>
#include <deque>
#include <functional>

#include "core/base/EventPump.h"

namespace kestrin::ui::kit {

/// Keeps what talks to the board, or changes what is sent to it, one after another, although the window stays alive in
/// between: long work holds a Passage and calls the pump; what the person starts meanwhile waits until the way is free.
///
/// Everything happens on the thread of the window.
class CommandGate : public QObject {
 public:
  /// The way is taken for as long as this lives. Passages may stand inside one another.
  class Passage {
   public:
    explicit Passage(CommandGate& gate) : m_gate(gate) { ++m_gate.m_passages; }
    ~Passage() { m_gate.Leave(); }
    Passage(const Passage&) = delete;
    Passage& operator=(const Passage&) = delete;

   private:
    CommandGate& m_gate;
  };

  /// The window gets its turn at most this often: more would only slow the work down.
  static constexpr std::chrono::milliseconds kInterval{8};

  explicit CommandGate(std::chrono::milliseconds interval = kInterval);

  [[nodiscard]] bool IsBusy() const { return m_passages > 0; }
  /// Whether something waits until the way is free. Work that can be taken up again later makes way then.
  [[nodiscard]] bool IsAwaited() const { return !m_waiting.empty(); }
  /// Runs `action` now, or from the event loop as soon as the way is free.
  void WhenFree(std::function<void()> action);
  /// Runs `last` now, or from the event loop as soon as the way is free, and nothing after it: what waits is dropped,
  /// and so is what comes later.
  void Shut(std::function<void()> last);
  /// Handles the events that are waiting: painting, timers, the buttons that may be used. A call from inside such an
  /// event does nothing. The gate must outlive the pump.
  [[nodiscard]] core::base::EventPump Pump();

 private:
  void Leave();
  void RunWaiting();
  void HandleEvents();

  std::chrono::milliseconds m_interval;
  int m_passages = 0;
  bool m_shut = false;
  bool m_pumping = false;
  std::chrono::steady_clock::time_point m_lastTurn;
  std::deque<std::function<void()>> m_waiting;
};

}  // namespace kestrin::ui::kit
