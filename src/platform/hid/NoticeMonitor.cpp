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

bool NoticeMonitor::IsTimeToLook(bool isTold) {
  const auto now = m_clock.Now();
  const bool isAgain = m_looksLeft > 0 && now - *m_lastLook >= kInterval;
  if (m_lastLook && !isTold && !isAgain) return false;
  if (isTold)
    m_looksLeft = kMoreLooks;
  else if (isAgain)
    --m_looksLeft;
  m_lastLook = now;
  return true;
}

std::vector<DeviceNotice> NoticeMonitor::Collect(std::int32_t vendorId, std::int32_t productId) {
  const std::vector<DeviceNotice> told = TakeAll();
  const bool isFirst = !m_lastLook;
  if (!IsTimeToLook(!told.empty())) return {};
  const std::vector<std::string> before = m_seen.Paths();
  std::vector<DeviceNotice> changes = m_seen.Look(vendorId, productId);
  // What was there from the beginning has not arrived.
  if (isFirst) changes.clear();
  std::vector<DeviceNotice> notices;
  for (const DeviceNotice& notice : told) {
    const std::string* path = Spelled(notice.path, m_seen.Paths());
    // What has gone again since is told to have gone in a notice of its own.
    if (path == nullptr && notice.kind == DeviceNotice::Kind::Removed) path = Spelled(notice.path, before);
    if (path != nullptr) notices.push_back({notice.kind, *path});
  }
  for (DeviceNotice& change : changes)
    if (std::find(notices.begin(), notices.end(), change) == notices.end()) notices.push_back(std::move(change));
  return notices;
}

}  // namespace kestrin::platform::hid
