// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <utility>

#include "core/base/EventPump.h"

namespace kestrin::cli {

/// The signals that ask the program to stop: Ctrl-C, a terminal that hangs up, a request to end. The first one is only
/// remembered, so that a command can end in order; a second Ctrl-C ends the program at once. One at a time: signals
/// belong to the whole process.
class Interrupt {
 public:
  Interrupt();
  ~Interrupt();
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;

  /// Whether a signal came.
  [[nodiscard]] static bool Requested();
  /// The exit status of a program that was stopped: 128 and the number of the first signal; 0 when none came.
  [[nodiscard]] static int Status();

  /// What a second Ctrl-C still does before it ends the program at once; null for nothing. It may do no more than
  /// signal handlers may.
  static void SetLastAct(void (*act)());

  /// Throws CommandFailure once a signal came; while there is an action, runs that instead.
  void Look();
  /// Look() for the waits of a board command or a long computation. Must not outlive the interrupt.
  [[nodiscard]] core::base::EventPump Pump() {
    return [this] { Look(); };
  }

 private:
  friend class InterruptAction;

  std::function<void()> m_action;
  bool m_acted = false;
};

/// For as long as it lives, the first Look() after a signal runs an action; the command goes on and ends by itself.
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
