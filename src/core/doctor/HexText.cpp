// SPDX-License-Identifier: MIT
#include "doctor/HexText.h"

namespace kestrin::core::doctor {

std::string HexText(std::span<const std::uint8_t> bytes, std::string_view separator) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const std::uint8_t byte : bytes) {
    if (!text.empty()) text += separator;
    text.append({kDigits[byte >> 4U], kDigits[byte & 0xFU]});
  }
  return text;
}

}  // namespace kestrin::core::doctor
