// SPDX-License-Identifier: MIT
#include <iostream>

#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/Interrupt.h"
#include "platform/process/Arguments.h"
#include "platform/process/StandardStreams.h"

int main(int argc, char** argv) {
  kestrin::platform::process::GuardStandardStreams();
  const kestrin::platform::process::Arguments arguments(argc, argv);
  kestrin::cli::Interrupt interrupt;
  kestrin::cli::CommandLine program(kestrin::cli::AllCommands(), KESTRIN_VERSION);
  return program.Run(arguments.Count(), arguments.Values(), interrupt, std::cout, std::cerr);
}
