#pragma once

#include <functional>
#include <utility>

#include "base/EventPump.h"

namespace kestrin::cli {

/// Ctrl-C. The first one is only remembered, so that a command can end in order; the second ends the program at once.
/// One at a time: signals belong to the whole process.
class Interrupt {
 public:
  Interrupt();
  ~Interrupt();
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;

  /// Whether Ctrl-C was pressed.
  [[nodiscard]] static bool Requested();

  /// Throws CommandFailure once Ctrl-C was pressed; while there is an action, runs that instead.
  void Look();
  /// Look() for the waits of a board command or a long computation. Must not outlive the interrupt.
  [[nodiscard]] base::EventPump Pump() {
    return [this] { Look(); };
  }

 private:
  friend class InterruptAction;

  std::function<void()> m_action;
  bool m_acted = false;
};

/// For as long as it lives, the first Look() after Ctrl-C runs an action; the command goes on and ends by itself.
/// Whatever the command still does afterwards is its end and is not stopped any more.
class InterruptAction {
 public:
  /// The interrupt must outlive it.
  InterruptAction(Interrupt& interrupt, std::function<void()> action) : m_interrupt(interrupt) {
    m_interrupt.m_action = std::move(action);
  }
  ~InterruptAction() {
    m_interrupt.m_action = [] {};
  }
  InterruptAction(const InterruptAction&) = delete;
  InterruptAction& operator=(const InterruptAction&) = delete;

 private:
  Interrupt& m_interrupt;
};

}  // namespace kestrin::cli
