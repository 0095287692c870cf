// SPDX-License-Identifier: MIT
#include "reference/Completions.h"
#include "reference/Places.h"

namespace kestrin::reference {

namespace {

/// The command that offers what begins like the word that is typed; "" for nothing.
std::string BashOffer(const Values& values) {
  switch (values.kind) {
    case Values::Kind::Files:
      return "compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -f -- \"$word\")";
    case Values::Kind::Folders:
      return "compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -d -- \"$word\")";
    case Values::Kind::Words:
      return "mapfile -t COMPREPLY < <(compgen -W '" + std::string(values.words) + "' -- \"$word\")";
    case Values::Kind::Unknown:
      break;
  }
  return ":";
}

}  // namespace

std::string BashCompletion(const ProgramText& program) {
  const std::vector<Place> places = PlacesOf(program);
  std::string commands;
  std::string values;
  std::string words;
  for (const Place& place : places) {
    if (!place.command.empty()) commands += (commands.empty() ? "\"" : " | \"") + place.command + "\"";
    for (const OptionText& option : place.valued)
      values +=
          "    \"" + place.command + ":" + option.name + "\") " + BashOffer(ValuesOf(option.value)) + "; return ;;\n";
    words += "    \"" + place.command + "\")\n      words='";
    for (const Word& word : place.words) words += (&word == place.words.data() ? "" : " ") + word.text;
    words += "'\n";
    // Where several things may stand, what is not known to be words is likely to be a file.
    for (const Values& argument : place.arguments)
      if (argument.kind == Values::Kind::Words)
        words += "      words+=' " + std::string(argument.words) + "'\n";
      else
        words += "      " + BashOffer(argument) + "\n";
    words += "      ;;\n";
  }
  const std::string function = "_" + program.name;
  std::string script = "# Completion of " + program.name + " for bash, made from the program's own options.\n";
  script += function + "() {\n";
  script += "  local word=\"${COMP_WORDS[COMP_CWORD]}\" command=\"\" key words=\"\" i\n";
  script += "  COMPREPLY=()\n";
  if (!commands.empty()) {
    script += "  for ((i = 1; i < COMP_CWORD; i++)); do\n";
    script += "    key=\"${command:+$command }${COMP_WORDS[i]}\"\n";
    script += "    case \"$key\" in " + commands + ") command=\"$key\" ;; esac\n  done\n";
  }
  script += "  case \"$command:${COMP_WORDS[COMP_CWORD - 1]}\" in\n" + values + "  esac\n";
  script += "  case \"$command\" in\n" + words + "  esac\n";
  script += "  local -a offered\n";
  script += "  mapfile -t offered < <(compgen -W \"$words\" -- \"$word\")\n";
  script += "  COMPREPLY+=(\"${offered[@]}\")\n}\n";
  script += "complete -F " + function + " " + program.name + "\n";
  return script;
}

}  // namespace kestrin::reference
