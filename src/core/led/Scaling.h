// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "base/Numbers.h"

namespace kestrin::core::led {

/// `a` * `b` / `divisor` as an `Integer`, rounded to the nearest, ties to the even one.
/// Throws std::overflow_error when the product does not fit 32 bits or the result does not fit `Integer`; no valid
/// level, luminance and LED type can cause that.
template <typename Integer>
[[nodiscard]] Integer Scale(std::int32_t a, std::int32_t b, std::int32_t divisor) {
  const auto product = base::RoundTo<std::int32_t>(static_cast<double>(a) * b);
  return base::RoundTo<Integer>(static_cast<double>(product) / divisor);
}

}  // namespace kestrin::core::led
