// SPDX-License-Identifier: MIT
#include "simulator/MovedBySaber.h"

#include <string>
#include <utility>

namespace kestrin::simulator {

void MovedBySaber::Add(Movement movement) {
  m_waiting.push_back(movement);
  if (m_waiting.size() > kMost) m_waiting.pop_front();
}

SensorValues MovedBySaber::Next() {
  if (m_script.IsOver() && !m_waiting.empty()) {
    const bool isSwing = m_waiting.front() == Movement::Swing;
    m_waiting.pop_front();
    // Long enough for the one before to be over, and for the rest to be known as one.
    const std::string text =
        "rest 0.6\n" + (isSwing ? "swing " + std::to_string(kSwingForce) : "tap " + std::to_string(kHitForce));
    if (core::base::Result<MotionScript> script = MotionScript::Parse(text, "saber")) m_script = *std::move(script);
  }
  return m_script.Next();
}

}  // namespace kestrin::simulator
