// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "base/Clock.h"

namespace kestrin::core::base {

/// How long work will still take that has come to `percent` (0 .. 100) in `elapsed`, in whole seconds. Empty at both
/// ends and during the first second, which says nothing about the rest.
[[nodiscard]] std::optional<long long> SecondsLeft(Clock::Duration elapsed, int percent);

/// Minutes and seconds as people write them: "0:09", "12:30".
[[nodiscard]] std::string MinutesAndSeconds(long long seconds);

}  // namespace kestrin::core::base
