// SPDX-License-Identifier: MIT
#include "base/WindowsName.h"

#include <algorithm>
#include <array>

#include "base/Text.h"

namespace kestrin::core::base {

namespace {

constexpr std::array<std::string_view, 6> kDevices{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
/// These with a digit behind them.
constexpr std::array<std::string_view, 2> kNumberedDevices{"COM", "LPT"};
/// The superscript digits count as digits there.
constexpr std::array<std::string_view, 13> kDeviceNumbers{"0", "1", "2", "3",      "4",      "5",     "6",
                                                          "7", "8", "9", "\u00B9", "\u00B2", "\u00B3"};
constexpr std::string_view kNoLetters = "<>:\"/\\|?*";

}  // namespace

bool IsDeviceName(std::string_view name) {
  // Blanks before the dot do not count.
  std::string_view stem = name.substr(0, name.find('.'));
  stem = stem.substr(0, stem.find_last_not_of(' ') + 1);
  const auto isStem = [stem](std::string_view device) { return EqualsIgnoringCase(stem, device); };
  if (std::any_of(kDevices.begin(), kDevices.end(), isStem)) return true;
  constexpr std::size_t kLetters = 3;
  if (stem.size() <= kLetters) return false;
  const bool numbered = std::any_of(kNumberedDevices.begin(), kNumberedDevices.end(), [&](std::string_view device) {
    return EqualsIgnoringCase(stem.substr(0, kLetters), device);
  });
  return numbered &&
         std::find(kDeviceNumbers.begin(), kDeviceNumbers.end(), stem.substr(kLetters)) != kDeviceNumbers.end();
}

std::string_view WhyNoWindowsName(std::string_view name) {
  if (name.empty()) return "it has no name; give it one";
  if (IsDeviceName(name)) return "Windows keeps this name for a device; choose another one";
  if (name.find_first_of(kNoLetters) != name.npos)
    return "Windows takes no name with any of < > : \" / \\ | ? *; choose another one";
  if (Shown(name) != name) return "Windows takes no name with control characters; choose another one";
  if (name.back() == '.' || name.back() == ' ')
    return "Windows takes no name that ends with a dot or a blank; choose another one";
  return "";
}

}  // namespace kestrin::core::base
