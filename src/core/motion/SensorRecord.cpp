// SPDX-License-Identifier: MIT
#include "motion/SensorRecord.h"

#include <optional>

namespace kestrin::core::motion {

void SensorRecord::Add(const SensorReading& reading) {
  const bool isAfterPause = !m_samples.empty() && reading.at - m_samples.back().reading.at > kLongestPause;
  if (isAfterPause) {
    m_rest = {};
    m_finder = {};
  }
  const SensorChange change = m_rest.Follow(reading);
  m_samples.push_back({reading, change, isAfterPause});
  if (m_rest.IsKnown())
    if (const std::optional<Movement> movement = m_finder.Take(change, reading.at); movement && m_trial.Take(*movement))
      m_marks.push_back(
          {*movement, movement->kind == Movement::Kind::Swing ? m_trial.Swings().size() : m_trial.Taps().size()});
  const std::chrono::milliseconds oldest = reading.at - kKept;
  while (m_samples.front().reading.at < oldest) m_samples.pop_front();
  while (!m_marks.empty() && m_marks.front().movement.at < oldest) m_marks.pop_front();
}

void SensorRecord::RestartTrial() {
  m_trial = {};
  m_marks.clear();
}

}  // namespace kestrin::core::motion
