// SPDX-License-Identifier: MIT
#include "sound/pack/PackedNames.h"

#include <algorithm>

#include "base/Text.h"
#include "base/WindowsName.h"

namespace kestrin::core::sound {

namespace {

/// In characters: even where each takes four bytes, number and ending fit into the 200 bytes of a font server's names.
constexpr std::size_t kLongestName = 45;
/// What paths, Windows and the fields of a request take for something else. So is "?", which stands for control
/// characters.
constexpr std::string_view kMeansMore = "/\\:?*\"<>|&=+%";
constexpr std::string_view kAtNoEnd = " .";

std::string Small(std::string text) {
  for (char& letter : text)
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  return text;
}

/// Bytes that are no UTF-8, which no other system could show, become "_".
std::string WholeCharacters(std::string_view text) {
  std::string whole;
  while (!text.empty()) {
    std::string_view character = base::FirstCharacters(text, 1);
    const auto lead = static_cast<unsigned char>(character[0]);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length != 0 && character.size() > length) character = character.substr(0, length);
    whole += length == character.size() ? character : "_";
    text.remove_prefix(character.size());
  }
  return whole;
}

}  // namespace

std::string PackedNames::Plain(std::string_view wished) {
  const std::size_t dot = wished.rfind('.');
  std::string name = base::Shown(WholeCharacters(dot == wished.npos || dot == 0 ? wished : wished.substr(0, dot)));
  std::replace_if(
      name.begin(), name.end(), [](char letter) { return kMeansMore.find(letter) != kMeansMore.npos; }, '_');
  name = base::FirstCharacters(name, kLongestName);
  const std::size_t first = name.find_first_not_of(kAtNoEnd);
  name = first == name.npos ? "" : name.substr(first, name.find_last_not_of(kAtNoEnd) - first + 1);
  if (name.empty()) return "sound";
  return base::IsDeviceName(name) ? "_" + name : name;
}

std::string PackedNames::Take(std::string_view wished, std::string_view ending) {
  const std::string plain = Plain(wished);
  std::string name = plain + std::string(ending);
  for (int number = 2; !m_taken.insert(Small(name)).second; ++number)
    name = plain + " " + std::to_string(number) + std::string(ending);
  return name;
}

}  // namespace kestrin::core::sound
