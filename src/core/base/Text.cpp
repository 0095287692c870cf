// SPDX-License-Identifier: MIT
#include "base/Text.h"

#include <algorithm>

namespace kestrin::core::base {

namespace {

bool ContinuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

/// The bytes of the character at the start of a text that is not empty; 1 for what is no UTF-8.
std::size_t LengthOfFirst(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const std::size_t length = lead < 0xC2 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 1;
  const std::string_view rest = text.substr(1, length - 1);
  return rest.size() == length - 1 && std::all_of(rest.begin(), rest.end(), ContinuesCharacter) ? length : 1;
}

/// Control characters are the bytes below the blank, the one behind "~", and U+0080 to U+009F: two bytes in UTF-8, one
/// on a terminal that knows no UTF-8.
bool IsControl(std::string_view character) {
  const auto first = static_cast<unsigned char>(character[0]);
  if (character.size() == 1) return first < 0x20 || (first >= 0x7F && first <= 0x9F);
  return first == 0xC2 && static_cast<unsigned char>(character[1]) <= 0x9F;
}

std::string WithoutControls(std::string_view text, std::string_view kept) {
  std::string shown;
  shown.reserve(text.size());
  while (!text.empty()) {
    const std::string_view character = text.substr(0, LengthOfFirst(text));
    shown += IsControl(character) && kept.find(character) == kept.npos ? "?" : character;
    text.remove_prefix(character.size());
  }
  return shown;
}

}  // namespace

std::vector<std::string_view> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> pieces;
  for (std::size_t at = text.find(separator); at != text.npos; at = text.find(separator)) {
    pieces.push_back(text.substr(0, at));
    text.remove_prefix(at + separator.size());
  }
  pieces.push_back(text);
  return pieces;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

std::string LastPathPiece(std::string_view path) {
  const std::size_t separator = path.find_last_of("/\\");
  return std::string(separator == path.npos ? path : path.substr(separator + 1));
}

std::string Shown(std::string_view text) { return WithoutControls(text, ""); }

std::string Quoted(std::string_view text) { return "\"" + Shown(text) + "\""; }

std::string ShownLines(std::string_view text) { return WithoutControls(text, "\n"); }

std::size_t Width(std::string_view text) {
  return text.size() - static_cast<std::size_t>(std::count_if(text.begin(), text.end(), ContinuesCharacter));
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
  std::size_t end = 0;
  while (end < text.size() && count > 0) {
    ++end;
    while (end < text.size() && ContinuesCharacter(text[end])) ++end;
    --count;
  }
  return text.substr(0, end);
}

}  // namespace kestrin::core::base
