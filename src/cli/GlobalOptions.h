// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kestrin::cli {

/// The options that every command takes.
struct GlobalOptions {
  std::string board = "auto";
  /// The folder with pictures, help file and LED catalogue; "" for the folder of the executable.
  std::string programFolder;
  bool json = false;
  /// No progress.
  bool quiet = false;
};

}  // namespace kestrin::cli
