// SPDX-License-Identifier: MIT
#include "ui/stage/BladeFlash.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestrin::ui::stage {

void BladeFlash::Hit(double now) { m_hit = now; }

void BladeFlash::LockUp(double now) {
  m_lockedSince = now;
  // Or it would flash once more when the blade is let go.
  m_hit.reset();
}

double BladeFlash::Length() const {
  if (m_fewer) return kLength;
  return m_lockedSince ? m_period / 2 : m_period;
}

std::optional<double> BladeFlash::Wanted(double now) const {
  if (m_lockedSince) return *m_lockedSince + std::floor((now - *m_lockedSince) / m_period) * m_period;
  return m_hit;
}

double BladeFlash::At(double now) {
  const std::optional<double> wanted = Wanted(now);
  if (wanted && wanted != m_shownWanted) {
    // What comes too soon is left out, not put off: it would flash when nothing happens.
    if (!m_fewer || !m_shown || now - *m_shown >= kApart) m_shown = m_fewer ? now : *wanted;
    m_shownWanted = wanted;
  }
  if (!m_shown) return 0;
  const double age = now - *m_shown;
  if (age < 0 || age >= Length()) return 0;
  if (m_lockedSince && !m_fewer) return 1;
  const double share = age / Length();
  // A hit is there at once and fades; softly it swells first.
  return m_fewer ? 0.6 * std::sin(std::numbers::pi * share) : 1 - share;
}

bool BladeFlash::IsStill(double now) const { return !m_lockedSince && (!m_hit || now - *m_hit > Length() + kApart); }

}  // namespace kestrin::ui::stage
