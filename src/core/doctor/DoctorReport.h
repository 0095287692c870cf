// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "doctor/Diagnosis.h"

namespace kestrin::core::doctor {

/// What goes into a report beside what was found.
struct ReportChoices {
  /// Name and version of the program that writes it.
  std::string program;
  /// Whether the board's serial number stands in it; it is left out everywhere otherwise.
  bool withSerialNumber = false;
};

/// A text for somebody who helps: versions, system, rule, interfaces, descriptor bytes, timings, answers, and where
/// they differ from what the protocol says. Lines end with "\n".
[[nodiscard]] std::string DoctorReport(const LinkFacts& facts, const std::optional<Answers>& answers,
                                       const Diagnosis& diagnosis, const ReportChoices& choices);

}  // namespace kestrin::core::doctor
