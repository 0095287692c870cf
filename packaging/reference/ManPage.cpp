// SPDX-License-Identifier: MIT
#include "reference/ManPage.h"

#include <algorithm>
#include <cctype>

namespace kestrin::reference {

namespace {

/// Text that stands on a line of its own, with nothing in it that "man" takes for more.
std::string Plain(const std::string& text) {
  std::string out;
  for (const char c : text) {
    if (c == '\\')
      out += "\\e";
    else if (c == '-')
      out += "\\-";
    else
      out += c;
  }
  return out.starts_with('.') || out.starts_with('\'') ? "\\&" + out : out;
}

std::string Bold(const std::string& text) { return "\\fB" + Plain(text) + "\\fR"; }
std::string Slanted(const std::string& text) { return "\\fI" + Plain(text) + "\\fR"; }

std::string Upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::toupper(c); });
  return text;
}

/// "--volume V" or "FILE", as it is typed.
std::string Typed(const OptionText& option) {
  if (!option.IsOption()) return Slanted(option.name);
  return Bold(option.name) + (option.value.empty() ? "" : " " + Slanted(option.value));
}

std::string Synopsis(const std::vector<OptionText>& options) {
  std::string text;
  for (const OptionText& option : options)
    text += " " + (option.isRequired ? Typed(option) : "[" + Typed(option) + "]");
  return text;
}

std::string Described(const std::vector<OptionText>& options) {
  std::string text;
  for (const OptionText& option : options) text += ".TP\n" + Typed(option) + "\n" + Plain(option.help) + "\n";
  return text;
}

}  // namespace

std::string ManPage(const ProgramText& program) {
  std::string page = ".TH " + Upper(program.name) + " 1 \"\" \"" + Plain("Kestrin Launcher " + program.version) +
                     "\" \"User Commands\"\n";
  page += ".SH NAME\n" + Plain(program.name) + " \\- " + Plain(program.title) + "\n";
  page += ".SH SYNOPSIS\n" + Bold(program.name) + Synopsis(program.options);
  page += (program.commands.empty() ? "" : " " + Slanted("COMMAND") + " ...") + std::string("\n");
  page += ".SH DESCRIPTION\n" + Plain(program.description) + "\n";
  page += ".SH OPTIONS\n" + Described(program.options);
  if (!program.commands.empty()) page += ".SH COMMANDS\n";
  for (const CommandText& command : program.commands) {
    page += ".SS " + Plain(command.name) + "\n";
    page += Bold(program.name) + " " + Bold(command.name) + Synopsis(command.options) + "\n.PP\n";
    page += Plain(command.description) + ".\n" + Described(command.options);
  }
  for (const Chapter& chapter : program.chapters) {
    page += ".SH " + Plain(Upper(chapter.title)) + "\n";
    for (const auto& [head, text] : chapter.paragraphs)
      page += (head.empty() ? ".PP\n" : ".TP\n" + Bold(head) + "\n") + Plain(text) + "\n";
  }
  return page;
}

}  // namespace kestrin::reference
