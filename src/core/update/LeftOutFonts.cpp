// SPDX-License-Identifier: MIT
#include "update/LeftOutFonts.h"

#include <algorithm>

#include "base/Text.h"
#include "update/PlainName.h"

namespace kestrin::core::update {

namespace {

/// Of how many the names are told.
constexpr std::size_t kMostNamed = 3;

}  // namespace

void LeftOutFonts::Add(std::string_view font) { m_shown.push_back(base::Quoted(ShownName(font))); }

void LeftOutFonts::Add(std::string_view font, std::string_view sound) {
  m_shown.push_back(base::Quoted(font) + " with its sound file " + base::Quoted(ShownName(sound)));
}

std::string LeftOutFonts::Text() const {
  if (m_shown.empty()) return "";
  const bool one = m_shown.size() == 1;
  std::string text = one ? " 1 font was left out, because not every computer can store its names: "
                         : " " + std::to_string(m_shown.size()) +
                               " fonts were left out, because not every computer can store their names: ";
  const std::size_t named = std::min(m_shown.size(), kMostNamed);
  for (std::size_t number = 0; number < named; ++number) text += (number > 0 ? ", " : "") + m_shown[number];
  if (named < m_shown.size()) text += " and " + std::to_string(m_shown.size() - named) + " more";
  return text + ". Ask whoever runs the update server to rename " + (one ? "it." : "them.");
}

}  // namespace kestrin::core::update
