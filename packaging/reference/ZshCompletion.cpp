// SPDX-License-Identifier: MIT
#include "reference/Completions.h"
#include "reference/Places.h"

namespace kestrin::reference {

namespace {

std::string ZshQuoted(const std::string& text) {
  std::string out = "'";
  for (const char c : text) out += c == '\'' ? "'\\''" : std::string(1, c);
  return out + "'";
}

/// "word:what it is", in which a colon of the word itself is told apart.
std::string ZshItem(const Word& word) {
  std::string text;
  for (const char c : word.text) text += (c == ':' ? "\\" : "") + std::string(1, c);
  return ZshQuoted(text + ":" + word.help);
}

/// Sets an array to the place's options, or to what else it has.
std::string ZshItems(const std::string& array, const Place& place, bool areOptions) {
  std::string text = "      " + array + "=(\n";
  for (const Word& word : place.words)
    if (word.text.starts_with('-') == areOptions) text += "        " + ZshItem(word) + "\n";
  return text + "      )\n";
}

std::string ZshOffer(const Values& values) {
  switch (values.kind) {
    case Values::Kind::Files:
      return "_files";
    case Values::Kind::Folders:
      return "_files -/";
    case Values::Kind::Words:
      return "compadd -- " + std::string(values.words);
    case Values::Kind::Unknown:
      break;
  }
  return "_message value";
}

}  // namespace

std::string ZshCompletion(const ProgramText& program) {
  const std::vector<Place> places = PlacesOf(program);
  std::string commands;
  std::string values;
  std::string items;
  for (const Place& place : places) {
    if (!place.command.empty()) commands += (commands.empty() ? "\"" : "|\"") + place.command + "\"";
    for (const OptionText& option : place.valued)
      values +=
          "    (\"" + place.command + ":" + option.name + "\") " + ZshOffer(ValuesOf(option.value)) + "; return ;;\n";
    items += "    (\"" + place.command + "\")\n";
    items += ZshItems("next", place, false) + ZshItems("options", place, true);
    for (const Values& argument : place.arguments)
      if (argument.kind != Values::Kind::Unknown) items += "      " + ZshOffer(argument) + "\n";
    items += "      ;;\n";
  }
  std::string script = "#compdef " + program.name + "\n";
  script += "# Completion of " + program.name + " for zsh, made from the program's own options.\n";
  script += "local command=\"\" key i\nlocal -a next options\n";
  if (!commands.empty()) {
    script += "for ((i = 2; i < CURRENT; i++)); do\n";
    script += "  key=\"${command:+$command }${words[i]}\"\n";
    script += "  case \"$key\" in (" + commands + ") command=\"$key\" ;; esac\ndone\n";
  }
  script += "case \"$command:${words[CURRENT - 1]}\" in\n" + values + "esac\n";
  script += "case \"$command\" in\n" + items + "esac\n";
  script += "_describe -t commands command next\n_describe -o -t options option options\n";
  return script;
}

}  // namespace kestrin::reference
