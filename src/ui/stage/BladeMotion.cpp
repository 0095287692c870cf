// SPDX-License-Identifier: MIT
#include "ui/stage/BladeMotion.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestrin::ui::stage {

namespace {

/// How tightly the blade follows, and its trail follows it, a second.
constexpr double kGrip = 30;
constexpr double kTrailGrip = 9;
/// A shake: degrees at first, turns a second, and how soon it fades.
constexpr double kShakeWidth = 2.4;
constexpr double kShakeTurns = 17;
constexpr double kShakeFade = 11;
constexpr double kShakeEnd = 0.5;
/// What is smaller cannot be seen.
constexpr double kUnseen = 0.01;
/// Steps of the motion are never longer, so that it stays calm when the window was busy.
constexpr double kLongestStep = 0.01;

}  // namespace

void BladeMotion::Aim(double degrees) { m_aim = std::clamp(degrees, kLowest, kHighest); }

void BladeMotion::Extend(bool out, double seconds) {
  const double growth = 1 / std::max(seconds, kQuickest);
  m_growth = out ? growth : -growth;
}

void BladeMotion::Shake() { m_shaken = 0; }

void BladeMotion::Step(double seconds) {
  for (double left = seconds; left > 0; left -= kLongestStep) {
    const double step = std::min(left, kLongestStep);
    // A spring that does not swing over.
    const double pull = kGrip * kGrip * (m_aim - m_degrees) - 2 * kGrip * m_speed;
    m_speed += pull * step;
    m_degrees += m_speed * step;
    m_trail += (m_degrees - m_trail) * std::min(1.0, kTrailGrip * step);
  }
  if (std::abs(m_aim - m_degrees) < kUnseen && std::abs(m_speed) < kUnseen * kGrip) {
    m_degrees = m_aim;
    m_speed = 0;
  }
  if (std::abs(m_degrees - m_trail) < kUnseen) m_trail = m_degrees;
  m_extent = std::clamp(m_extent + m_growth * seconds, 0.0, 1.0);
  m_shaken += seconds;
  m_shake = m_shaken >= kShakeEnd ? 0
                                  : kShakeWidth * std::exp(-kShakeFade * m_shaken) *
                                        std::sin(2 * std::numbers::pi * kShakeTurns * m_shaken);
}

double BladeMotion::Extent() const { return m_extent; }

bool BladeMotion::IsStill() const {
  const bool isAtEnd = m_growth > 0 ? m_extent >= 1 : m_extent <= 0;
  return isAtEnd && m_degrees == m_aim && m_trail == m_degrees && m_shaken >= kShakeEnd;
}

}  // namespace kestrin::ui::stage
