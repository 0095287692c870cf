// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "platform/hid/HidAgent.h"
#include "platform/hid/HidStack.h"

namespace kestrin::platform::hid {

/// Whether `a` is numbered before `b`: "hidraw9" comes before "hidraw10".
[[nodiscard]] bool ComesBefore(const HidNode& a, const HidNode& b);

/// ListBoards() over a given stack.
[[nodiscard]] std::vector<BoardListing> ListBoards(HidStack& stack);

}  // namespace kestrin::platform::hid
