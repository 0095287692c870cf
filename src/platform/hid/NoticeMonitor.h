// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "platform/hid/DeviceMonitor.h"
#include "platform/hid/HidStack.h"

namespace kestrin::platform::hid {

/// Passes on what the system has told of HID interfaces of all kinds. Asks for the ids once, and again when there is
/// something to tell; nothing is asked for while nothing happens.
class NoticeMonitor final : public DeviceMonitor {
 public:
  /// `stack` must outlive the monitor.
  explicit NoticeMonitor(HidStack& stack) : m_stack(stack) {}

  /// What the system tells; on any thread. The case of a path's letters need not be the HID stack's.
  void Add(DeviceNotice notice);

  [[nodiscard]] std::vector<DeviceNotice> Collect(std::int32_t vendorId, std::int32_t productId) override;

 private:
  [[nodiscard]] std::vector<DeviceNotice> TakeAll();

  HidStack& m_stack;
  std::mutex m_mutex;
  std::vector<DeviceNotice> m_told;
  bool m_listed = false;
  /// As the HID stack spells them.
  std::vector<std::string> m_present;
};

}  // namespace kestrin::platform::hid
