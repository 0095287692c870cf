// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/hid/HidAgent.h"
#include "platform/hid/HidStack.h"

namespace kestrin::platform::hid {

/// Whether `a` is numbered before `b`: "hidraw9" comes before "hidraw10".
[[nodiscard]] bool ComesBefore(const HidNode& a, const HidNode& b);

/// Whether both of a board's variables are in a report descriptor.
[[nodiscard]] bool HasBoardVariables(std::span<const std::uint8_t> descriptor);

/// ListBoards() over a given stack.
[[nodiscard]] std::vector<BoardListing> ListBoards(HidStack& stack);

}  // namespace kestrin::platform::hid
