// SPDX-License-Identifier: MIT
#include "update/PlainName.h"

#include <algorithm>
#include <array>

#include "base/Text.h"
#include "base/WindowsName.h"
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

bool IsBlankOrDot(char c) { return c == ' ' || c == '.'; }

}  // namespace

bool IsPlainName(std::string_view name) {
  if (name.empty() || name.size() > kLongestName) return false;
  if (IsBlankOrDot(name.front()) || IsBlankOrDot(name.back())) return false;
  if (name.find_first_of(kForbidden) != name.npos) return false;
  return base::Shown(name) == name && !base::IsDeviceName(name);
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
