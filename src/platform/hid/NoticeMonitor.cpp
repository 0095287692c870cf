// SPDX-License-Identifier: MIT
#include "platform/hid/NoticeMonitor.h"

#include <algorithm>
#include <utility>

#include "core/base/Text.h"

namespace kestrin::platform::hid {

namespace {

/// The path as one of the lists has it; nullptr when none has.
const std::string* Spelled(const std::string& path, const std::vector<std::string>& paths) {
  const auto found = std::find_if(paths.begin(), paths.end(),
                                  [&](const std::string& one) { return core::base::EqualsIgnoringCase(one, path); });
  return found == paths.end() ? nullptr : &*found;
}

}  // namespace

void NoticeMonitor::Add(DeviceNotice notice) {
  const std::lock_guard lock(m_mutex);
  m_told.push_back(std::move(notice));
}

std::vector<DeviceNotice> NoticeMonitor::TakeAll() {
  const std::lock_guard lock(m_mutex);
  return std::exchange(m_told, {});
}

std::vector<DeviceNotice> NoticeMonitor::Collect(std::int32_t vendorId, std::int32_t productId) {
  std::vector<DeviceNotice> notices;
  const std::vector<DeviceNotice> told = TakeAll();
  if (told.empty() && m_listed) return notices;
  m_listed = true;
  std::vector<std::string> before = std::exchange(m_present, {});
  for (const HidNode& node : m_stack.Enumerate(vendorId, productId)) m_present.push_back(node.path);
  for (const DeviceNotice& notice : told) {
    const std::string* path = Spelled(notice.path, m_present);
    // What has gone again since is told to have gone in a notice of its own.
    if (path == nullptr && notice.kind == DeviceNotice::Kind::Removed) path = Spelled(notice.path, before);
    if (path != nullptr) notices.push_back({notice.kind, *path});
  }
  return notices;
}

}  // namespace kestrin::platform::hid
