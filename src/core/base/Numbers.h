// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace kestrin::core::base {

/// The number at the start of a text: blanks are ignored wherever they stand, "." is the decimal point whatever the
/// locale, reading stops at the first character that cannot continue the number. 0 when the text starts with none.
[[nodiscard]] double LeadingNumber(std::string_view text);

/// The nearest whole number, ties to the even one.
[[nodiscard]] double RoundHalfEven(double value);

/// `value` rounded to the nearest whole number (ties to even) as an `Integer`.
/// Throws std::overflow_error when the rounded value does not fit (or is not a number).
template <typename Integer>
[[nodiscard]] Integer RoundTo(double value) {
  static_assert(sizeof(Integer) < sizeof(double), "the limits must be exact as doubles");
  const double rounded = RoundHalfEven(value);
  if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max()))
    throw std::overflow_error("number out of range");
  return static_cast<Integer>(rounded);
}

}  // namespace kestrin::core::base
