// SPDX-License-Identifier: MIT
#include "platform/hid/PollingMonitor.h"

#include <algorithm>
#include <utility>

namespace kestrin::platform::hid {

namespace {

void AddMissing(const std::vector<std::string>& paths, const std::vector<std::string>& others, DeviceNotice::Kind kind,
                std::vector<DeviceNotice>& notices) {
  for (const std::string& path : paths) {
    if (std::find(others.begin(), others.end(), path) == others.end()) notices.push_back({kind, path});
  }
}

}  // namespace

std::vector<DeviceNotice> PollingMonitor::Collect(std::int32_t vendorId, std::int32_t productId) {
  std::vector<DeviceNotice> notices;
  const auto now = m_clock.Now();
  if (m_lastLook && now - *m_lastLook < kInterval) return notices;
  m_lastLook = now;

  std::vector<std::string> present;
  for (const HidNode& node : m_stack.Enumerate(vendorId, productId)) present.push_back(node.path);
  AddMissing(m_present, present, DeviceNotice::Kind::Removed, notices);
  AddMissing(present, m_present, DeviceNotice::Kind::Arrived, notices);
  m_present = std::move(present);
  return notices;
}

}  // namespace kestrin::platform::hid
