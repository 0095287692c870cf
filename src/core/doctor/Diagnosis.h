// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "doctor/Interview.h"
#include "doctor/LinkFacts.h"

namespace kestrin::core::doctor {

/// What is asked about the way to a board, in this order.
enum class Question { Present, Permitted, Free, Answers, Identified };

enum class Verdict {
  Ok,
  Problem,
  Unknown,  ///< it waits for a question before it
};

/// The one thing to do next.
enum class Remedy {
  None,
  PlugIn,        ///< plug a board in; other cable, other port
  InstallRule,   ///< let the program write the permission rule
  CloseProgram,  ///< close the program that has the board
  PlugInAgain,   ///< unplug it and plug it in again
  Wait,          ///< it is busy
};

/// The answer to one question.
struct Finding {
  Question question = Question::Present;
  Verdict verdict = Verdict::Unknown;
  /// What was found, in plain words.
  std::string text;
  /// What to do about it, in plain words; "" where nothing is to be done.
  std::string next;
  Remedy remedy = Remedy::None;
};

/// What stands between this computer and a board.
struct Diagnosis {
  /// In the order of Question.
  std::array<Finding, 5> findings;
  /// Things that were noticed beside the five: a device that was passed over, answers that are not as the protocol
  /// says. A sentence each.
  std::vector<std::string> remarks;

  [[nodiscard]] bool IsHealthy() const;
  /// The first problem; nullptr when there is none.
  [[nodiscard]] const Finding* Problem() const;
};

/// Judges. Without `answers` nobody has talked to the board yet, and the last two questions wait.
[[nodiscard]] Diagnosis Diagnose(const LinkFacts& facts, const std::optional<Answers>& answers);

/// The question as a person asks it: "Is a board plugged in?".
[[nodiscard]] const char* TextOf(Question question);
/// The question's word for programs: "present", "permitted", "free", "answers", "identified".
[[nodiscard]] const char* WordOf(Question question);
/// "ok", "problem", "unknown".
[[nodiscard]] const char* WordOf(Verdict verdict);

}  // namespace kestrin::core::doctor
