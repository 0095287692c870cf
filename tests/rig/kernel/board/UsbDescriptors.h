// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kestrin::rig {

/// What FunctionFS is told first: a HID interface with an IN endpoint 1 and, if wanted, an OUT endpoint 2, at full and
/// at high speed. `reportDescriptor` is the size of the HID report descriptor in bytes.
[[nodiscard]] std::vector<std::uint8_t> FunctionDescriptors(bool outEndpoint, std::size_t reportDescriptor);
/// And second: the interface's name.
[[nodiscard]] std::vector<std::uint8_t> FunctionStrings();

}  // namespace kestrin::rig
