// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "core/doctor/LinkFacts.h"

namespace kestrin::platform::doctor {

/// The devices on the USB bus with exactly these ids, by their places, as the Linux kernel lists them in /sys. A device
/// may vanish between any two of the files that are read here: what is gone is left out. `root` is where /sys begins.
[[nodiscard]] std::vector<core::doctor::BusDevice> ListBusDevices(std::int32_t vendorId, std::int32_t productId,
                                                                  const std::filesystem::path& root);

}  // namespace kestrin::platform::doctor
