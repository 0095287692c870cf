// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace kestrin::core::base {

/// Compares two texts as people count: below 0 when `a` comes first ("swing 2" before "swing 10"), 0 when they are
/// alike but for the case of letters and leading zeros. `fold` makes letters of either case the same.
template <typename Letter, typename Fold>
[[nodiscard]] int CompareNaturally(std::basic_string_view<Letter> a, std::basic_string_view<Letter> b, Fold fold) {
  const auto isDigit = [](Letter letter) { return letter >= Letter('0') && letter <= Letter('9'); };
  // Takes the digits from the front of the text, leading zeros left out.
  const auto takeNumber = [&isDigit](std::basic_string_view<Letter>& text) {
    std::size_t end = 0;
    while (end < text.size() && isDigit(text[end])) ++end;
    std::basic_string_view<Letter> number = text.substr(0, end);
    text.remove_prefix(end);
    while (number.size() > 1 && number.front() == Letter('0')) number.remove_prefix(1);
    return number;
  };
  while (!a.empty() && !b.empty()) {
    if (isDigit(a.front()) && isDigit(b.front())) {
      const auto one = takeNumber(a);
      const auto other = takeNumber(b);
      if (one.size() != other.size()) return one.size() < other.size() ? -1 : 1;
      if (const int order = one.compare(other); order != 0) return order;
      continue;
    }
    const auto one = fold(a.front());
    const auto other = fold(b.front());
    if (one != other) return one < other ? -1 : 1;
    a.remove_prefix(1);
    b.remove_prefix(1);
  }
  return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
}

/// Whether `a` comes before `b` in that order, the letters A to Z like small ones; both are UTF-8.
[[nodiscard]] bool NaturallyBefore(std::string_view a, std::string_view b);

}  // namespace kestrin::core::base
