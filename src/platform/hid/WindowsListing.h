// SPDX-License-Identifier: MIT
#pragma once

// windows.h before what needs it.
#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "core/base/Result.h"
#include "platform/hid/HidStack.h"

namespace kestrin::platform::hid {

/// The class of HID interfaces.
inline constexpr GUID kHidInterfaces{0x4D1E55B2, 0xF16F, 0x11CF, {0x88, 0xCB, 0x00, 0x11, 0x11, 0x00, 0x00, 0x30}};

/// The interfaces with exactly these ids, as the system itself lists them. The HID library has a state that belongs to
/// the thread that talks to boards; this may be asked on any. Nothing is read from or written to a device.
[[nodiscard]] std::vector<HidNode> ListInterfaces(std::int32_t vendorId, std::int32_t productId);

/// The report descriptor of an interface, rebuilt from what the system has read of it; empty when it cannot be had.
/// Takes nothing from whoever uses it.
[[nodiscard]] std::vector<std::uint8_t> InterfaceDescriptor(const std::string& path);

/// Whether this person may open the interface, which is closed again at once.
[[nodiscard]] core::base::Result<> TryInterface(const std::string& path);

}  // namespace kestrin::platform::hid
