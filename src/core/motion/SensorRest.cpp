// SPDX-License-Identifier: MIT
#include "motion/SensorRest.h"

#include <algorithm>
#include <array>

#include "base/Numbers.h"

namespace kestrin::core::motion {

namespace {

constexpr std::array kAxes{&SensorReading::x, &SensorReading::y, &SensorReading::z};

}  // namespace

SensorChange SensorRest::Follow(const SensorReading& reading) {
  m_last.push_back(reading);
  if (m_last.size() > kStillReadings) m_last.pop_front();
  if (!m_rest) m_rest = reading;
  if (m_last.size() == kStillReadings && IsStill()) {
    for (const auto axis : kAxes) {
      double sum = 0;
      for (const SensorReading& last : m_last) sum += last.*axis;
      (*m_rest).*axis = static_cast<std::int32_t>(base::RoundHalfEven(sum / static_cast<double>(kStillReadings)));
    }
    m_isKnown = true;
  }
  return {reading.x - m_rest->x, reading.y - m_rest->y, reading.z - m_rest->z};
}

bool SensorRest::IsStill() const {
  return std::all_of(kAxes.begin(), kAxes.end(), [this](const auto axis) {
    const auto [least, most] = std::ranges::minmax(m_last, {}, axis);
    return most.*axis - least.*axis <= kTremble;
  });
}

}  // namespace kestrin::core::motion
