// SPDX-License-Identifier: MIT
#include "ledsetup/KnownPulses.h"

namespace kestrin::core::ledsetup {

void KnownPulses::Told(const led::Pulses& pulses) {
  m_sent = pulses;
  m_onBoard = {pulses[led::kIdlePulse], pulses[led::kFocPulse]};
}

void KnownPulses::Sent(std::int32_t pulseId, const led::PulseContent& pulse, bool whole) {
  const auto place = static_cast<std::size_t>(pulseId);
  m_sent.at(place) = pulse;
  m_onBoard.at(place) = whole ? std::optional(pulse) : std::nullopt;
}

bool KnownPulses::WouldBeLost(const led::Pulses& pulses) const {
  for (std::size_t i = 0; i < pulses.size(); ++i)
    if (pulses[i] != m_onBoard[i] && !(m_inFile && pulses[i] == (*m_inFile)[i])) return true;
  return false;
}

}  // namespace kestrin::core::ledsetup
