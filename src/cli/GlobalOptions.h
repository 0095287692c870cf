// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "cli/Syntax.h"

namespace kestrin::cli {

/// The options that every command takes.
struct GlobalOptions {
  std::string board = "auto";
  /// The folder with pictures, help file and LED catalogue; "" for the one that belongs to the program.
  std::string programFolder;
  bool json = false;
  /// No progress.
  bool quiet = false;
};

/// Declares them.
void DeclareGlobalOptions(Syntax& syntax, GlobalOptions& options);

}  // namespace kestrin::cli
