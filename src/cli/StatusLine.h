// SPDX-License-Identifier: MIT
#pragma once

#include <iosfwd>
#include <string>

#include "cli/GlobalOptions.h"
#include "cli/Terminal.h"

namespace kestrin::cli {

/// One line of a terminal that always shows the newest text, never wider than the terminal. Elsewhere, and with
/// `--quiet`: nothing. It appears on standard output, with `--json` on standard error.
class StatusLine {
 public:
  explicit StatusLine(const GlobalOptions& options);
  /// What is written next begins on a line of its own.
  ~StatusLine();
  StatusLine(const StatusLine&) = delete;
  StatusLine& operator=(const StatusLine&) = delete;

  void Show(const std::string& text);

 private:
  std::ostream& m_out;
  bool m_quiet;
  Stream m_stream;
  std::string m_shown;
};

}  // namespace kestrin::cli
