// SPDX-License-Identifier: MIT
#include <iostream>

#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/Interrupt.h"
#include "platform/process/StandardStreams.h"

int main(int argc, char** argv) {
  kestrin::platform::process::GuardStandardStreams();
  kestrin::cli::Interrupt interrupt;
  kestrin::cli::CommandLine program(kestrin::cli::AllCommands(), KESTRIN_VERSION);
  return program.Run(argc, argv, interrupt, std::cout, std::cerr);
}
