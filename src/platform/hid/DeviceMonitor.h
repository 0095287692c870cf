// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kestrin::platform::hid {

/// A HID interface came or went.
struct DeviceNotice {
  enum class Kind { Arrived, Removed };

  Kind kind = Kind::Arrived;
  std::string path;

  friend bool operator==(const DeviceNotice&, const DeviceNotice&) = default;
};

/// Notices HID interfaces that come and go from its construction on.
class DeviceMonitor {
 public:
  virtual ~DeviceMonitor() = default;

  /// What happened since the last call, oldest first; returns at once. Arrivals are those of the ids given; a removal
  /// may be any interface's, as the ids of a device that is gone cannot always be asked for.
  [[nodiscard]] virtual std::vector<DeviceNotice> Collect(std::int32_t vendorId, std::int32_t productId) = 0;
};

}  // namespace kestrin::platform::hid
