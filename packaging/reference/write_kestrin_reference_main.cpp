// SPDX-License-Identifier: MIT
// write_kestrin_reference FOLDER: writes the manual page of "kestrin" and its completions, made of the options that its
// parser knows.

#include <exception>
#include <iostream>

#include "programs/CommandLineOptions.h"
#include "reference/WriteReference.h"

namespace {

using namespace kestrin;

reference::ProgramText Kestrin() {
  using programs::CommandLineOptions;
  reference::ProgramText program;
  program.name = "kestrin";
  program.version = KESTRIN_VERSION;
  program.title = "window for Kestrin light-saber sound boards";
  program.description =
      std::string(CommandLineOptions::kDescription) +
      " The window composes sound sets, sends them to the board, and sets up motion detection and LED "
      "drivers. F1 explains everything in it.";
  for (const QCommandLineOption& option : CommandLineOptions::Options())
    program.options.push_back({"--" + option.names().constLast().toStdString(), option.valueName().toStdString(),
                               option.description().toStdString(), false});
  program.options.push_back({"--help", "", "Tell the options.", false});
  program.options.push_back({"--version", "", "Tell the program's version.", false});
  program.options.push_back({CommandLineOptions::kArgument, "", CommandLineOptions::kArgumentHelp, false});
  program.chapters = {{"Environment", {{"KESTRIN_UPDATE_SERVER", "The server that new sounds come from."}}},
                      {"Files",
                       {{"~/.local/share/kestrin",
                         "What the program keeps for this person: sound fonts, settings, parameters of boards."}}},
                      {"See also", {{"", "kestrinctl(1)"}}}};
  return program;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: write_kestrin_reference FOLDER\n";
    return 2;
  }
  try {
    reference::WriteReference(Kestrin(), argv[1]);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "write_kestrin_reference: " << error.what() << '\n';
    return 1;
  }
}
