// SPDX-License-Identifier: MIT
#include "motion/MovementFinder.h"

#include <algorithm>
#include <utility>

namespace kestrin::core::motion {

std::optional<Movement> MovementFinder::Take(const SensorChange& change, std::chrono::milliseconds at) {
  const std::int32_t force = change.Force();
  const std::int32_t growth = force - std::exchange(m_lastForce, force);
  if (!m_underWay) {
    if (force < kFloor) return std::nullopt;
    m_underWay.emplace();
    m_steepest = 0;
  }
  m_steepest = std::max(m_steepest, growth);
  if (force > m_underWay->peak) {
    m_underWay->peak = force;
    m_underWay->at = at;
  }
  m_quiet = force < kFloor ? m_quiet + 1 : 0;
  m_underWay->kind = Kind();
  if (m_quiet < (m_underWay->kind == Movement::Kind::Tap ? kQuietAfterTap : kQuietAfterSwing)) return std::nullopt;
  m_quiet = 0;
  return std::exchange(m_underWay, std::nullopt);
}

Movement::Kind MovementFinder::Kind() const {
  // A swing of a third of a second grows by at most two fifths of its peak from one reading to the next.
  return 2 * m_steepest >= m_underWay->peak ? Movement::Kind::Tap : Movement::Kind::Swing;
}

}  // namespace kestrin::core::motion
