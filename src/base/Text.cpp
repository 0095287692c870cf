#include "base/Text.h"

#include <algorithm>

namespace kestrin::base {

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

}  // namespace kestrin::base
