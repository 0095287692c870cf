// SPDX-License-Identifier: MIT
#pragma once

#include "platform/hid/HidStack.h"

namespace kestrin::platform::hid {

/// The HID stack as hidapi offers it. One at a time: the library's own state begins and ends with it.
class HidapiStack final : public HidStack {
 public:
  HidapiStack();
  ~HidapiStack() override;
  HidapiStack(const HidapiStack&) = delete;
  HidapiStack& operator=(const HidapiStack&) = delete;

  [[nodiscard]] std::vector<HidNode> Enumerate(std::int32_t vendorId, std::int32_t productId) override;
  [[nodiscard]] std::vector<std::uint8_t> Descriptor(const HidNode& node) override;
  core::base::Result<> Look(const HidNode& node) override;
  core::base::Result<std::unique_ptr<HidConnection>> Open(const HidNode& node) override;
};

}  // namespace kestrin::platform::hid
