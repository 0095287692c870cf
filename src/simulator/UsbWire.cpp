// SPDX-License-Identifier: MIT
#include "simulator/UsbWire.h"

namespace kestrin::simulator {

void UsbWire::Transfer(std::size_t bytes) {
  const core::base::Clock::Duration now = m_clock.Now();
  if (now - m_busyUntil > kLateness) m_busyUntil = now;
  m_busyUntil += static_cast<int>((bytes + kPacketSize - 1) / kPacketSize) * kFrame;
  if (m_busyUntil > now) m_clock.Wait(m_busyUntil - now);
}

}  // namespace kestrin::simulator
