// SPDX-License-Identifier: MIT
#include "platform/hid/PollingMonitor.h"

namespace kestrin::platform::hid {

std::vector<DeviceNotice> PollingMonitor::Collect(std::int32_t vendorId, std::int32_t productId) {
  const auto now = m_clock.Now();
  if (m_lastLook && now - *m_lastLook < kInterval) return {};
  m_lastLook = now;
  return m_seen.Look(vendorId, productId);
}

}  // namespace kestrin::platform::hid
