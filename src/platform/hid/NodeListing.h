// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/hid/HidStack.h"

namespace kestrin::platform::hid {

/// What a HID device is, as the kernel writes it: "0003:000004D8:0000FA37" - bus, vendor, product.
struct HidIds {
  /// A device on USB, or one that a program offers as such.
  static constexpr unsigned kUsb = 3;

  unsigned bus = 0;
  unsigned vendor = 0;
  unsigned product = 0;
};

/// Reads such a text; nothing when it is none.
[[nodiscard]] std::optional<HidIds> ReadHidIds(std::string_view text);

/// The HID nodes with exactly these ids, in no order, as the Linux kernel lists them in /sys. Opens no device. A device
/// may vanish between any two of the files that are read here: one whose ids are gone is left out, and one whose texts
/// are gone is listed without them. `root` is where /sys begins.
[[nodiscard]] std::vector<HidNode> ListNodes(std::int32_t vendorId, std::int32_t productId,
                                             const std::filesystem::path& root = "/");

/// Whether the device file at `path` is that of a device with these ids just now. Opens no device. To be asked right
/// before one is opened: in the moment in which a board goes, another device may get its path.
[[nodiscard]] bool IsNodeOf(const std::string& path, std::int32_t vendorId, std::int32_t productId,
                            const std::filesystem::path& root = "/");

/// The report descriptor of the device file at `path`; empty when it cannot be read. Needs no permission.
[[nodiscard]] std::vector<std::uint8_t> ReadNodeDescriptor(const std::string& path,
                                                           const std::filesystem::path& root = "/");

}  // namespace kestrin::platform::hid
