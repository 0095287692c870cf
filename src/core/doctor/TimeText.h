// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>

namespace kestrin::core::doctor {

/// How long something took: "less than 1 ms", "40 ms", from a tenth of a second on "0.7 s".
[[nodiscard]] std::string TimeText(std::chrono::microseconds time);

/// How long ago something was, in the largest unit that fits: "1 second", "2 minutes", "3 hours", "4 days".
[[nodiscard]] std::string AgeText(std::chrono::seconds age);

}  // namespace kestrin::core::doctor
