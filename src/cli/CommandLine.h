// SPDX-License-Identifier: MIT
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "cli/Command.h"

namespace kestrin::cli {

/// The program behind its main(): parses the arguments, runs the command that they name, prints what it reports.
class CommandLine {
 public:
  /// `version` is what `--version` says behind the program's name.
  CommandLine(std::vector<std::unique_ptr<Command>> commands, std::string version);

  /// Returns the exit code; throws nothing.
  [[nodiscard]] int Run(int argc, const char* const* argv, Interrupt& interrupt, std::ostream& out,
                        std::ostream& errors) noexcept;

 private:
  std::vector<std::unique_ptr<Command>> m_commands;
  std::string m_version;
};

}  // namespace kestrin::cli
