// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "cli/Command.h"
#include "core/doctor/Interview.h"

namespace kestrin::cli {

/// What came of asking the chosen board what changes nothing.
struct BoardInterview {
  /// Nothing when no board could be opened.
  std::optional<core::doctor::Answers> answers;
  /// Why a board that is there could not be opened, as THIDagent::AccessProblem() has it; "" otherwise.
  std::string accessProblem;
};

/// Asks the board that a session would use. One that keeps silent is not waited for longer than for one answer. Throws
/// CommandFailure when there is no such board to be had, or a signal came.
[[nodiscard]] BoardInterview InterviewBoard(Context& context);

}  // namespace kestrin::cli
