// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kestrin::core::base {

/// The shortest text that reads back as `number`: plain decimals with "." as the decimal point and no grouping,
/// whatever the locale. Zero is "0", also a negative one.
[[nodiscard]] std::string PlainNumber(double number);

}  // namespace kestrin::core::base
