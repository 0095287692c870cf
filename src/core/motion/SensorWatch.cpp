// SPDX-License-Identifier: MIT
#include "motion/SensorWatch.h"

#include <algorithm>

namespace kestrin::core::motion {

SensorWatch::Duration SensorWatch::UntilNext() const {
  if (!m_last) return {};
  // From the last question, not from when the next was due: a board that was late is not hurried.
  return std::max(Duration{}, *m_last + kInterval - m_clock.Now());
}

base::Result<SensorReading> SensorWatch::Read() {
  const Duration now = m_clock.Now();
  m_last = now;
  if (!m_first) m_first = now;
  SensorReading reading;
  reading.at = std::chrono::duration_cast<std::chrono::milliseconds>(now - *m_first);
  if (!m_board.GetACC(reading.x, reading.y, reading.z, reading.tilt))
    return base::Failure{base::FailureKind::NoAnswer, m_hasAnswered ? kFallenSilent : kUnknown};
  m_hasAnswered = true;
  return reading;
}

}  // namespace kestrin::core::motion
