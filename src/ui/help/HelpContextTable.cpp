// SPDX-License-Identifier: MIT
#include "ui/help/HelpContextTable.h"

#include <utility>

namespace kestrin::ui::help {

namespace {

constexpr std::size_t kWord = 4;

std::uint32_t WordAt(std::string_view bytes, std::size_t offset) {
  std::uint32_t word = 0;
  for (std::size_t i = kWord; i-- > 0;) word = word << 8 | static_cast<std::uint8_t>(bytes[offset + i]);
  return word;
}

}  // namespace

HelpContextTable::HelpContextTable(std::string ivb, std::string strings)
    : m_ivb(std::move(ivb)), m_strings(std::move(strings)) {}

std::optional<std::string> HelpContextTable::PlaceOf(std::uint32_t context) const {
  // The size in front is not needed: the table ends where its bytes end.
  for (std::size_t pair = kWord; pair + 2 * kWord <= m_ivb.size(); pair += 2 * kWord) {
    if (WordAt(m_ivb, pair) == context) return TextAt(WordAt(m_ivb, pair + kWord));
  }
  return std::nullopt;
}

std::optional<std::string> HelpContextTable::TextAt(std::uint32_t offset) const {
  if (offset >= m_strings.size()) return std::nullopt;
  const std::size_t end = m_strings.find('\0', offset);
  if (end == m_strings.npos || end == offset) return std::nullopt;
  return m_strings.substr(offset, end - offset);
}

}  // namespace kestrin::ui::help
