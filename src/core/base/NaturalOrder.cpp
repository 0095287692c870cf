// SPDX-License-Identifier: MIT
#include "base/NaturalOrder.h"

namespace kestrin::core::base {

bool NaturallyBefore(std::string_view a, std::string_view b) {
  // As bytes without a sign, so that letters beyond A to Z come behind them.
  const auto fold = [](char letter) {
    const auto byte = static_cast<unsigned char>(letter);
    return letter >= 'A' && letter <= 'Z' ? static_cast<unsigned char>(byte - 'A' + 'a') : byte;
  };
  const int order = CompareNaturally(a, b, fold);
  return order != 0 ? order < 0 : a < b;
}

}  // namespace kestrin::core::base
