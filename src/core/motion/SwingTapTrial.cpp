// SPDX-License-Identifier: MIT
#include "motion/SwingTapTrial.h"

namespace kestrin::core::motion {

bool SwingTapTrial::Take(const Movement& movement) {
  const std::optional<Movement::Kind> turn = Turn();
  m_ignored.reset();
  if (!turn) return false;
  if (movement.kind != turn) {
    m_ignored = movement.kind;
    return false;
  }
  (turn == Movement::Kind::Swing ? m_swings : m_taps).push_back(movement.peak);
  return true;
}

std::optional<Movement::Kind> SwingTapTrial::Turn() const {
  if (m_swings.size() < kWanted) return Movement::Kind::Swing;
  if (m_taps.size() < kWanted) return Movement::Kind::Tap;
  return std::nullopt;
}

}  // namespace kestrin::core::motion
