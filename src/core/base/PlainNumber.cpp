// SPDX-License-Identifier: MIT
#include "base/PlainNumber.h"

#include <array>
#include <charconv>

namespace kestrin::core::base {

std::string PlainNumber(double number) {
  // Takes the smallest and the largest numbers written out.
  std::array<char, 1100> buffer{};
  // Adding zero takes the sign off a negative one.
  const auto written =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), number + 0.0, std::chars_format::fixed);
  return {buffer.data(), written.ptr};
}

}  // namespace kestrin::core::base
