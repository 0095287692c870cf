// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "cli/GlobalOptions.h"
#include "cli/Interrupt.h"
#include "cli/Report.h"
#include "cli/Syntax.h"
#include "core/base/Disk.h"
#include "platform/boards/BoardChoice.h"

namespace kestrin::cli {

/// What a command works in.
struct Context {
  const GlobalOptions& options;
  const platform::boards::BoardChoice& board;
  Interrupt& interrupt;
  /// Everything of the person's is written to it.
  core::base::Disk& disk;
  /// Name and version of the program.
  const std::string& program;
};

/// One command of the command line.
class Command {
 public:
  virtual ~Command() = default;
  /// "info", or the command's group in front: "sound info".
  [[nodiscard]] virtual std::string Name() const = 0;
  /// One line for the help.
  [[nodiscard]] virtual std::string Description() const = 0;
  /// Declares the command's own arguments.
  virtual void Declare(Syntax& syntax) { static_cast<void>(syntax); }
  /// Does the work with the arguments that were parsed. Throws CommandFailure when there is nothing to report but why
  /// it could not be done.
  [[nodiscard]] virtual Report Run(Context& context) = 0;
};

}  // namespace kestrin::cli
