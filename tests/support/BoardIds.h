// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace kestrin::support {

/// The ids of a board, written down once more: what tests expect does not come from what they test.
inline constexpr std::int32_t kVendorId = 0x04D8;
inline constexpr std::int32_t kProductId = 0xFA37;

}  // namespace kestrin::support
