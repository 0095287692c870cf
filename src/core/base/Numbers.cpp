// SPDX-License-Identifier: MIT
#include "base/Numbers.h"

#include <charconv>
#include <string>

namespace kestrin::core::base {

double LeadingNumber(std::string_view text) {
  std::string digits;
  for (const char c : text)
    if (c != ' ' && c != '\t') digits += c;
  std::string_view rest = digits;
  const bool negative = rest.starts_with('-');
  if (negative || rest.starts_with('+')) rest.remove_prefix(1);
  // from_chars would also take "inf" and "nan", which are words here.
  if (rest.empty() || !(rest[0] == '.' || (rest[0] >= '0' && rest[0] <= '9'))) return 0;
  double value = 0;
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
  if (error == std::errc::result_out_of_range) {
    // from_chars leaves the value alone here; too large and too small differ only in the sign of the exponent.
    const std::string_view number = rest.substr(0, static_cast<std::size_t>(end - rest.data()));
    const bool tiny = number.find("e-") != number.npos || number.find("E-") != number.npos || number[0] == '.' ||
                      number.starts_with("0.");
    value = tiny ? 0 : std::numeric_limits<double>::infinity();
  }
  return negative ? -value : value;
}

double RoundHalfEven(double value) {
  // The remainder to the nearest whole number, ties to even, is exact whatever rounding mode the thread is in.
  return std::isfinite(value) ? value - std::remainder(value, 1.0) : value;
}

}  // namespace kestrin::core::base
