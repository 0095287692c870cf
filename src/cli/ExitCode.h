// SPDX-License-Identifier: MIT
#pragma once

namespace kestrin::cli {

/// How the program ends; scripts rely on the numbers.
enum class ExitCode : int {
  Done = 0,
  Failed = 1,
  WrongUsage = 2,
  NoBoard = 3,
  /// Stopped by a signal; what the program ends with is Interrupt::Status(), which is this number for Ctrl-C.
  Interrupted = 130,
};

}  // namespace kestrin::cli
