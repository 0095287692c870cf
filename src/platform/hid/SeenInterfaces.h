// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/hid/DeviceMonitor.h"
#include "platform/hid/HidStack.h"

namespace kestrin::platform::hid {

/// The interfaces that were there at the last look, none before the first.
class SeenInterfaces {
 public:
  /// `stack` must outlive the object.
  explicit SeenInterfaces(HidStack& stack) : m_stack(stack) {}

  /// Asks for the ids and returns what has changed since the last look, first what has gone.
  std::vector<DeviceNotice> Look(std::int32_t vendorId, std::int32_t productId);
  /// As the HID stack spells them.
  [[nodiscard]] const std::vector<std::string>& Paths() const { return m_paths; }

 private:
  HidStack& m_stack;
  std::vector<std::string> m_paths;
};

}  // namespace kestrin::platform::hid
