// SPDX-License-Identifier: MIT
#include "reference/Places.h"

#include <algorithm>
#include <iterator>

namespace kestrin::reference {

namespace {

struct Named {
  std::string_view name;
  Values values;
};

constexpr Named kNamed[] = {
    {"FILE", {Values::Kind::Files, ""}},
    {"OUT", {Values::Kind::Files, ""}},
    {"F", {Values::Kind::Files, ""}},
    {"SOURCE", {Values::Kind::Files, ""}},
    {"DIR", {Values::Kind::Folders, ""}},
    {"BOARD", {Values::Kind::Words, "auto sim"}},
    {"PULSE", {Values::Kind::Words, "idle foc"}},
};

void Add(Place& place, const std::vector<OptionText>& options) {
  for (const OptionText& option : options) {
    if (!option.IsOption()) {
      place.arguments.push_back(ValuesOf(option.name));
      continue;
    }
    place.words.push_back({option.name, option.help});
    if (!option.value.empty()) place.valued.push_back(option);
  }
}

}  // namespace

Values ValuesOf(std::string_view name) {
  if (name.ends_with("...")) name.remove_suffix(3);
  const auto* const found =
      std::find_if(std::begin(kNamed), std::end(kNamed), [name](const Named& one) { return one.name == name; });
  return found == std::end(kNamed) ? Values() : found->values;
}

std::vector<Place> PlacesOf(const ProgramText& program) {
  Place first;
  for (const auto& [name, description] : program.groups) first.words.push_back({name, description});
  for (const CommandText& command : program.commands)
    if (command.name.find(' ') == std::string::npos) first.words.push_back({command.name, command.description});
  Add(first, program.options);
  std::vector<Place> places{first};

  for (const auto& [name, description] : program.groups) {
    Place group{name, {}, {}, {}};
    for (const CommandText& command : program.commands)
      if (command.name.starts_with(name + " "))
        group.words.push_back({command.name.substr(name.size() + 1), command.description});
    Add(group, program.options);
    places.push_back(group);
  }
  for (const CommandText& command : program.commands) {
    Place place{command.name, {}, {}, {}};
    Add(place, command.options);
    Add(place, program.options);
    places.push_back(place);
  }
  return places;
}

}  // namespace kestrin::reference
