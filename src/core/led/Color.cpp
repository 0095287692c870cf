// SPDX-License-Identifier: MIT
#include "led/Color.h"

#include "base/Numbers.h"

namespace kestrin::core::led {

std::string_view ColorWord(Color color) {
  for (const auto& [word, value] : kColorWords)
    if (value == color) return word;
  return "";
}

Components SysToRGB(std::int32_t sysColor, const SystemColorLookup& getSysColor) {
  const auto color = static_cast<std::uint32_t>(sysColor < 0 ? getSysColor(sysColor & 0x7FFFFFFF) : sysColor);
  return {static_cast<std::int16_t>(color % 256), static_cast<std::int16_t>(color / 256 % 256),
          static_cast<std::int16_t>(color / 65536 % 256)};
}

Color RGBToSys(std::int16_t red, std::int16_t green, std::int16_t blue) {
  return base::RoundTo<Color>(red + green * 256.0 + blue * 65536.0);
}

}  // namespace kestrin::core::led
