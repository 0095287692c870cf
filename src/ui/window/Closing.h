// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace kestrin::ui::kit {
class CommandGate;
}

namespace kestrin::ui::window {

/// How the program comes to its end: one close at a time; all questions before anything is stopped, so that Cancel
/// leaves everything as it is; then what is going on is stopped and comes to its safe end first.
class Closing {
 public:
  struct Steps {
    /// Asks whatever has to be asked; false when the person wants to stay.
    std::function<bool()> ask;
    /// Tells what is going on to stop; it need not have stopped when this returns.
    std::function<void()> stop;
    /// Nothing goes on any more: the end.
    std::function<void()> finish;
  };

  /// The gate must outlive it.
  Closing(kit::CommandGate& gate, Steps steps);

  /// The person wants to close the window. True when that is done; otherwise they want to stay, were asked already, or
  /// the end comes as soon as what is going on has stopped.
  [[nodiscard]] bool Close();
  /// The end without a question.
  void EndNow();
  /// Whether the end is certain: nothing may begin any more.
  [[nodiscard]] bool IsEnding() const { return m_state >= State::Ending; }
  [[nodiscard]] bool IsOver() const { return m_state == State::Over; }

 private:
  enum class State { Open, Asking, Ending, Over };

  kit::CommandGate& m_gate;
  Steps m_steps;
  State m_state = State::Open;
};

}  // namespace kestrin::ui::window
