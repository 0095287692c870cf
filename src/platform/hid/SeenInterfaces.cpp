// SPDX-License-Identifier: MIT
#include "platform/hid/SeenInterfaces.h"

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

std::vector<DeviceNotice> SeenInterfaces::Look(std::int32_t vendorId, std::int32_t productId) {
  std::vector<DeviceNotice> changes;
  std::vector<std::string> present;
  for (const HidNode& node : m_stack.Enumerate(vendorId, productId)) present.push_back(node.path);
  AddMissing(m_paths, present, DeviceNotice::Kind::Removed, changes);
  AddMissing(present, m_paths, DeviceNotice::Kind::Arrived, changes);
  m_paths = std::move(present);
  return changes;
}

}  // namespace kestrin::platform::hid
