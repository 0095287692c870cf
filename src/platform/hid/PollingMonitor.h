// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>
#include <vector>

#include "core/base/Clock.h"
#include "platform/hid/DeviceMonitor.h"
#include "platform/hid/SeenInterfaces.h"

namespace kestrin::platform::hid {

/// Notices by asking the HID stack for the ids, at most once a second; for systems whose own notices are not read. A
/// device that is unplugged and plugged in again between two looks is not noticed.
class PollingMonitor final : public DeviceMonitor {
 public:
  static constexpr std::chrono::seconds kInterval{1};

  /// Both must outlive the monitor.
  PollingMonitor(HidStack& stack, const core::base::Clock& clock) : m_seen(stack), m_clock(clock) {}

  [[nodiscard]] std::vector<DeviceNotice> Collect(std::int32_t vendorId, std::int32_t productId) override;

 private:
  SeenInterfaces m_seen;
  const core::base::Clock& m_clock;
  std::optional<core::base::Clock::Duration> m_lastLook;
};

}  // namespace kestrin::platform::hid
