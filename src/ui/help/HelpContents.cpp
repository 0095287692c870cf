// SPDX-License-Identifier: MIT
#include "ui/help/HelpContents.h"

#include <algorithm>
#include <string>

#include "core/base/Text.h"

namespace kestrin::ui::help {

namespace {

/// The value of an attribute in double quotes, empty when the tag has none.
std::string Attribute(std::string_view tag, std::string_view name) {
  const std::string start = std::string(name) + "=\"";
  const auto at = std::search(tag.begin(), tag.end(), start.begin(), start.end(), [](char left, char right) {
    return core::base::EqualsIgnoringCase(std::string_view(&left, 1), std::string_view(&right, 1));
  });
  if (at == tag.end()) return "";
  const std::string_view rest = tag.substr(static_cast<std::size_t>(at - tag.begin()) + start.size());
  return std::string(rest.substr(0, rest.find('"')));
}

/// Puts back the characters that cannot stand in an attribute as they are.
std::string Unescaped(std::string text) {
  constexpr std::pair<std::string_view, char> kEntities[] = {
      {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&amp;", '&'}};
  for (const auto& [entity, character] : kEntities) {
    for (std::size_t at = text.find(entity); at != text.npos; at = text.find(entity, at + 1))
      text.replace(at, entity.size(), 1, character);
  }
  return text;
}

bool IsTag(std::string_view tag, std::string_view name) {
  return core::base::EqualsIgnoringCase(tag.substr(0, tag.find_first_of(" \t\r\n")), name);
}

}  // namespace

std::vector<HelpEntry> ReadHelpContents(std::string_view text) {
  std::vector<HelpEntry> entries;
  HelpEntry entry;
  int depth = -1;
  for (std::size_t open = text.find('<'); open != text.npos; open = text.find('<', open + 1)) {
    const std::size_t close = text.find('>', open);
    if (close == text.npos) break;
    const std::string_view tag = text.substr(open + 1, close - open - 1);
    if (IsTag(tag, "ul")) ++depth;
    if (IsTag(tag, "/ul")) --depth;
    if (IsTag(tag, "object")) entry = HelpEntry{};
    if (IsTag(tag, "param")) {
      const std::string name = Attribute(tag, "name");
      if (core::base::EqualsIgnoringCase(name, "Name")) entry.title = Unescaped(Attribute(tag, "value"));
      if (core::base::EqualsIgnoringCase(name, "Local")) entry.place = Unescaped(Attribute(tag, "value"));
    }
    if (IsTag(tag, "/object") && !entry.title.empty()) {
      entry.depth = std::max(depth, 0);
      entries.push_back(entry);
    }
  }
  return entries;
}

}  // namespace kestrin::ui::help
