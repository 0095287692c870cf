// SPDX-License-Identifier: MIT
#include "saber/SwingDetector.h"

#include <cmath>

namespace kestrin::core::saber {

namespace {

constexpr double kSecondsOfUnit = 0.01;
/// Of the longest integration time a little more is remembered.
constexpr double kRemembered = 0.5;
/// Over how long a stop is looked at.
constexpr double kMoment = 0.03;
/// What is slower than this part of the threshold rests.
constexpr double kRest = 0.1;

}  // namespace

std::optional<double> SwingDetector::SpeedOver(double span) const {
  const Moment& last = m_moments.back();
  const double from = last.seconds - span;
  if (m_moments.front().seconds > from) return std::nullopt;
  // Between two moments the blade has turned evenly.
  std::size_t after = m_moments.size() - 1;
  while (after > 0 && m_moments[after - 1].seconds >= from) --after;
  const Moment& later = m_moments[after];
  double degrees = later.degrees;
  if (after > 0 && later.seconds > from) {
    const Moment& earlier = m_moments[after - 1];
    const double share = (from - earlier.seconds) / (later.seconds - earlier.seconds);
    degrees = earlier.degrees + (later.degrees - earlier.degrees) * share;
  }
  return (last.degrees - degrees) / span;
}

std::optional<Event> SwingDetector::Turn(double seconds, double degrees) {
  if (!m_moments.empty() && seconds <= m_moments.back().seconds) {
    m_moments.back().degrees = degrees;
    return std::nullopt;
  }
  m_moments.push_back({seconds, degrees});
  while (m_moments.size() > 1 && m_moments[1].seconds < seconds - kRemembered) m_moments.pop_front();

  const double threshold = m_sensitivity.threshold;
  if (const std::optional<double> moment = SpeedOver(kMoment)) {
    if (std::abs(*moment) >= kQuick * threshold) m_quick = seconds;
    const bool stops = m_quick && std::abs(*moment) <= kRest * threshold;
    if (stops || (m_quick && seconds - *m_quick > kStop)) {
      const bool isHit = stops && seconds - *m_quick <= kStop;
      m_quick.reset();
      if (isHit) {
        m_way = 0;
        return Event::Hit;
      }
    }
  }

  const std::optional<double> speed = SpeedOver(m_sensitivity.integrationTime * kSecondsOfUnit);
  if (!speed) return std::nullopt;
  if (std::abs(*speed) < threshold / 2) m_way = 0;
  const int way = *speed > 0 ? 1 : -1;
  if (std::abs(*speed) < threshold || way == m_way) return std::nullopt;
  m_way = way;
  return Event::Swing;
}

void SwingDetector::Forget() {
  m_moments.clear();
  m_way = 0;
  m_quick.reset();
}

}  // namespace kestrin::core::saber
