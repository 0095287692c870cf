// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "reference/ProgramText.h"

namespace kestrin::reference {

/// What can be typed for a value or an argument of a certain name.
struct Values {
  enum class Kind { Unknown, Files, Folders, Words };
  Kind kind = Kind::Unknown;
  /// Of Kind::Words: with blanks between.
  std::string_view words;
};

/// By the name that the help gives it: "FILE", "DIR" and others; "..." behind it says that there may be several.
[[nodiscard]] Values ValuesOf(std::string_view name);

/// A word with what the help says of it.
struct Word {
  std::string text;
  std::string help;
};

/// A place on the command line: behind a command or a group of commands, or behind the program's name alone.
struct Place {
  /// "sound info", "sound", "".
  std::string command;
  /// Commands and options that may stand there.
  std::vector<Word> words;
  /// The options among them that are followed by a value.
  std::vector<OptionText> valued;
  /// What else may stand there.
  std::vector<Values> arguments;
};

/// All places of the program, the one behind its name first.
[[nodiscard]] std::vector<Place> PlacesOf(const ProgramText& program);

}  // namespace kestrin::reference
