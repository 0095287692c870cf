// SPDX-License-Identifier: MIT
#include "ui/window/Closing.h"

#include <utility>

#include "ui/kit/CommandGate.h"

namespace kestrin::ui::window {

Closing::Closing(kit::CommandGate& gate, Steps steps) : m_gate(gate), m_steps(std::move(steps)) {}

bool Closing::Close() {
  if (m_state != State::Open) return IsOver();
  m_state = State::Asking;
  const bool wanted = m_steps.ask();
  // Somebody else may have decided while the questions stood.
  if (m_state == State::Asking) {
    m_state = State::Open;
    if (wanted) EndNow();
  }
  return IsOver();
}

void Closing::EndNow() {
  if (IsEnding()) return;
  m_state = State::Ending;
  m_steps.stop();
  m_gate.Shut([this] {
    m_state = State::Over;
    m_steps.finish();
  });
}

}  // namespace kestrin::ui::window
