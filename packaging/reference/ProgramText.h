// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kestrin::reference {

/// An option, or an argument that is known by its place.
struct OptionText {
  /// "--board", or "FILE".
  std::string name;
  /// What the option's value is called: "BOARD"; "" without one.
  std::string value;
  std::string help;
  bool isRequired = false;

  [[nodiscard]] bool IsOption() const { return name.starts_with('-'); }
};

struct CommandText {
  /// With its group in front: "sound info".
  std::string name;
  std::string description;
  std::vector<OptionText> options;
};

/// A chapter of the manual, each paragraph of which has a headline or "" instead.
struct Chapter {
  std::string title;
  std::vector<std::pair<std::string, std::string>> paragraphs;
};

/// All that a program lets people say to it, as its own definitions have it.
struct ProgramText {
  std::string name;
  std::string version;
  /// What it is, in a few words.
  std::string title;
  std::string description;
  /// Those that stand with every command.
  std::vector<OptionText> options;
  /// "sound" and what it is about.
  std::vector<std::pair<std::string, std::string>> groups;
  std::vector<CommandText> commands;
  /// Chapters behind those of the options.
  std::vector<Chapter> chapters;
};

}  // namespace kestrin::reference
