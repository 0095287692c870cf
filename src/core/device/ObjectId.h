// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace kestrin::core::device {

/// Identities up to this one are given out by owners (a board gives 1 to its variables); object ids lie above.
inline constexpr std::int32_t kLargestGivenIdentity = 1000;

/// The next of the numbers that tell objects of the device link apart for as long as the process runs; above
/// kLargestGivenIdentity.
[[nodiscard]] std::int32_t NextObjectId();

}  // namespace kestrin::core::device
