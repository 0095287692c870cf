// SPDX-License-Identifier: MIT
#include "reference/Completions.h"
#include "reference/Places.h"

namespace kestrin::reference {

namespace {

std::string FishQuoted(const std::string& text) {
  std::string out = "'";
  for (const char c : text) out += (c == '\'' || c == '\\' ? "\\" : "") + std::string(1, c);
  return out + "'";
}

/// What follows an option, or stands for an argument.
std::string FishOffer(const Values& values) {
  switch (values.kind) {
    case Values::Kind::Files:
      return "-F";
    case Values::Kind::Folders:
      return "-f -a '(__fish_complete_directories)'";
    case Values::Kind::Words:
      return "-f -a '" + std::string(values.words) + "'";
    case Values::Kind::Unknown:
      break;
  }
  return "-f";
}

}  // namespace

std::string FishCompletion(const ProgramText& program) {
  const std::vector<Place> places = PlacesOf(program);
  const std::string function = "__" + program.name + "_at";
  std::string script = "# Completion of " + program.name + " for fish, made from the program's own options.\n";
  script += "function " + function + "\n  set -l command ''\n";
  script += "  for word in (commandline -opc)[2..-1]\n";
  script += "    switch (string trim -- \"$command $word\")\n";
  for (const Place& place : places)
    if (!place.command.empty())
      script += "      case " + FishQuoted(place.command) + "\n        set command " + FishQuoted(place.command) + "\n";
  script += "    end\n  end\n  test \"$command\" = \"$argv\"\nend\n";
  script += "complete -c " + program.name + " -f\n";
  for (const Place& place : places) {
    const std::string line =
        "complete -c " + program.name + " -n " + FishQuoted(function + " " + FishQuoted(place.command)) + " ";
    for (const Word& word : place.words) {
      const bool isOption = word.text.starts_with("--");
      script += line + (isOption ? "-l " + word.text.substr(2) : "-a " + FishQuoted(word.text));
      for (const OptionText& option : place.valued)
        if (option.name == word.text) script += " -r " + FishOffer(ValuesOf(option.value));
      script += " -d " + FishQuoted(word.help) + "\n";
    }
    for (const Values& argument : place.arguments)
      if (argument.kind != Values::Kind::Unknown) script += line + FishOffer(argument) + "\n";
  }
  return script;
}

}  // namespace kestrin::reference
