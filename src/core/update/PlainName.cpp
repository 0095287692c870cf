// SPDX-License-Identifier: MIT
#include "update/PlainName.h"

#include <algorithm>
#include <array>

#include "base/Text.h"
#include "update/FontFiles.h"

namespace kestrin::core::update {

namespace {

/// The longest name that a file or folder from the server may have, in bytes.
constexpr std::size_t kLongestName = 200;

constexpr std::size_t kShownBytes = 60;

/// What separates folders somewhere, what Windows cannot store, what has a meaning in a form's body.
constexpr std::string_view kForbidden = "/\\:?*\"<>|&=+%";

/// What an update keeps in the fonts folder beside the fonts.
constexpr std::array<std::string_view, 3> kTaken{FontFiles::kCompleteMarker, FontFiles::kDescriptor,
                                                 FontFiles::kTemporaryName};

/// Names that Windows keeps for devices, whatever stands behind a dot.
constexpr std::array<std::string_view, 6> kDevices{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
/// These with a digit behind them.
constexpr std::array<std::string_view, 2> kNumberedDevices{"COM", "LPT"};
/// The superscript digits count as digits there.
constexpr std::array<std::string_view, 13> kDeviceNumbers{"0", "1", "2", "3",      "4",      "5",     "6",
                                                          "7", "8", "9", "\u00B9", "\u00B2", "\u00B3"};

bool IsDevice(std::string_view name) {
  // Blanks before the dot do not count.
  std::string_view stem = name.substr(0, name.find('.'));
  stem = stem.substr(0, stem.find_last_not_of(' ') + 1);
  const auto isStem = [stem](std::string_view device) { return base::EqualsIgnoringCase(stem, device); };
  if (std::any_of(kDevices.begin(), kDevices.end(), isStem)) return true;
  constexpr std::size_t kLetters = 3;
  if (stem.size() <= kLetters) return false;
  const bool numbered = std::any_of(kNumberedDevices.begin(), kNumberedDevices.end(), [&](std::string_view device) {
    return base::EqualsIgnoringCase(stem.substr(0, kLetters), device);
  });
  return numbered &&
         std::find(kDeviceNumbers.begin(), kDeviceNumbers.end(), stem.substr(kLetters)) != kDeviceNumbers.end();
}

bool IsBlankOrDot(char c) { return c == ' ' || c == '.'; }

}  // namespace

bool IsPlainName(std::string_view name) {
  if (name.empty() || name.size() > kLongestName) return false;
  if (IsBlankOrDot(name.front()) || IsBlankOrDot(name.back())) return false;
  if (name.find_first_of(kForbidden) != name.npos) return false;
  return base::Shown(name) == name && !IsDevice(name);
}

bool IsFontName(std::string_view name) {
  return IsPlainName(name) && std::none_of(kTaken.begin(), kTaken.end(), [name](std::string_view taken) {
           return base::EqualsIgnoringCase(name, taken);
         });
}

std::string ShownName(std::string_view name) {
  std::string shown(name.substr(0, kShownBytes));
  if (shown.size() < name.size()) {
    // No half character at the end.
    while (!shown.empty() && (static_cast<unsigned char>(name[shown.size()]) & 0xC0U) == 0x80U) shown.pop_back();
    shown += "...";
  }
  return base::Shown(shown);
}

}  // namespace kestrin::core::update
