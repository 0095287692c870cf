// SPDX-License-Identifier: MIT
#pragma once

#include <iosfwd>

#include "cli/Report.h"

namespace kestrin::cli {

/// Prints a command's report: with `json` as exactly one JSON document, else as text for people; its message always as
/// "kestrinctl: MESSAGE" where failures go. In texts for people no control character reaches the terminal, whatever
/// names from files and answers hold; the document holds them exactly, written as escapes.
class Output {
 public:
  /// The streams must outlive the output.
  Output(std::ostream& out, std::ostream& errors, bool json) : m_out(out), m_errors(errors), m_json(json) {}

  void Print(const Report& report);

 private:
  std::ostream& m_out;
  std::ostream& m_errors;
  bool m_json;
};

}  // namespace kestrin::cli
