// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "core/base/Clock.h"
#include "platform/hid/DeviceMonitor.h"
#include "platform/hid/SeenInterfaces.h"

namespace kestrin::platform::hid {

/// Passes on what the system has told of HID interfaces of all kinds. Asks for the ids once, when there is something to
/// tell, and a few times more after that: an interface may be listed only a while after its notice, or still be listed
/// when it is told to have gone. Nothing is asked for while nothing happens.
class NoticeMonitor final : public DeviceMonitor {
 public:
  /// How often is looked again after a notice, and how long after each other at least.
  static constexpr int kMoreLooks = 5;
  static constexpr std::chrono::seconds kInterval{1};

  /// Both must outlive the monitor.
  NoticeMonitor(HidStack& stack, const core::base::Clock& clock) : m_seen(stack), m_clock(clock) {}

  /// What the system tells; on any thread. The case of a path's letters need not be the HID stack's.
  void Add(DeviceNotice notice);

  /// What is told early is told again by the time the list of interfaces agrees with it.
  [[nodiscard]] std::vector<DeviceNotice> Collect(std::int32_t vendorId, std::int32_t productId) override;

 private:
  [[nodiscard]] std::vector<DeviceNotice> TakeAll();
  /// Whether it is time to ask, with or without something told.
  [[nodiscard]] bool IsTimeToLook(bool isTold);

  SeenInterfaces m_seen;
  const core::base::Clock& m_clock;
  std::mutex m_mutex;
  std::vector<DeviceNotice> m_told;
  /// Nothing before the first.
  std::optional<core::base::Clock::Duration> m_lastLook;
  int m_looksLeft = 0;
};

}  // namespace kestrin::platform::hid
