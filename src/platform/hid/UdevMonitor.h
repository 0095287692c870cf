// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "platform/hid/DeviceMonitor.h"

struct udev;
struct udev_monitor;

namespace kestrin::platform::hid {

/// Notices of the Linux kernel, through libudev.
class UdevMonitor final : public DeviceMonitor {
 public:
  /// Whose notices to listen to: those that udevd passes on once the node has its permissions, or the kernel's own.
  enum class Source { Udevd, Kernel };

  /// Udevd where it runs; in containers and small virtual machines it often does not.
  [[nodiscard]] static Source PreferredSource();

  explicit UdevMonitor(Source source);
  ~UdevMonitor() override;
  UdevMonitor(const UdevMonitor&) = delete;
  UdevMonitor& operator=(const UdevMonitor&) = delete;

  /// False when the system gave no monitor; Collect() then returns nothing.
  [[nodiscard]] bool IsListening() const { return m_monitor != nullptr; }

  [[nodiscard]] std::vector<DeviceNotice> Collect(std::int32_t vendorId, std::int32_t productId) override;

 private:
  struct UdevDeleter {
    void operator()(udev* context) const;
  };
  struct MonitorDeleter {
    void operator()(udev_monitor* monitor) const;
  };

  std::unique_ptr<udev, UdevDeleter> m_udev;
  std::unique_ptr<udev_monitor, MonitorDeleter> m_monitor;
};

}  // namespace kestrin::platform::hid
