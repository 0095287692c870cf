// SPDX-License-Identifier: MIT
#include "ui/window/AboutFacts.h"

#include "core/base/PathText.h"
#include "core/base/Text.h"

namespace kestrin::ui::window {

namespace {

/// A heading with its lines; nothing without any.
std::string Section(const std::string& heading, const std::vector<std::string>& lines) {
  if (lines.empty()) return "";
  std::string text = "\n" + heading + "\n";
  for (const std::string& line : lines) text += "  " + core::base::Shown(line) + "\n";
  return text;
}

}  // namespace

std::string AboutReport(const AboutFacts& facts) {
  std::vector<std::string> places;
  for (const AboutFacts::Place& place : facts.places)
    places.push_back(place.what + ": " + (place.path.empty() ? "-" : core::base::TextOf(place.path)));
  return "Kestrin Launcher " + facts.version + "\n" + facts.licence + "\n" + Section("System", facts.system) +
         Section("Libraries", facts.libraries) + Section("Where things lie", places);
}

}  // namespace kestrin::ui::window
