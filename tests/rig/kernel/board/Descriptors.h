// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "rig/kernel/board/BoardPlan.h"

namespace kestrin::rig {

/// The HID report descriptor of a device of that kind.
[[nodiscard]] std::vector<std::uint8_t> ReportDescriptor(BoardPlan::Kind kind);

}  // namespace kestrin::rig
