// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/base/EventPump.h"

namespace kestrin::platform::doctor {

/// The program of that name on the search path; nothing when there is none.
[[nodiscard]] std::optional<std::filesystem::path> FindProgram(const std::string& name);

/// How a program ended.
struct ProgramEnd {
  /// Its exit status, 128 and the number of the signal that ended it, or kNotStarted where there is neither.
  int status = 0;
  /// What it said on its standard error output, at most kMostErrors bytes of it.
  std::string errors;

  static constexpr int kNotStarted = -1;
  static constexpr std::size_t kMostErrors = 4096;
};

/// How a program is run.
struct ProgramRun {
  /// The program's file and its arguments.
  std::vector<std::string> command;
  /// Whether it may talk to the person at the terminal: it reads what they type, and what it says they see at once.
  bool isAtTerminal = false;
  /// Gets its turn every 20 ms. When it throws, the program is asked to end and no longer waited for.
  core::base::EventPump pump;
};

/// Runs a program and waits for its end. Its standard output goes where this program's error output goes.
[[nodiscard]] ProgramEnd Run(const ProgramRun& run);

}  // namespace kestrin::platform::doctor
