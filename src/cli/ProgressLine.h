// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>

#include "cli/GlobalOptions.h"
#include "cli/Terminal.h"
#include "core/base/Clock.h"

namespace kestrin::cli {

/// Shows how long work gets on. On a terminal: one line for each phase, with a bar, the percentage and the time left,
/// drawn anew as it grows and never wider than the terminal. Elsewhere: the phase's name on a line of its own. With
/// `--quiet`: nothing. It appears on standard output, with `--json` on standard error.
class ProgressLine {
 public:
  /// The clock must outlive the line.
  ProgressLine(const GlobalOptions& options, const core::base::Clock& clock);
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// A new phase begins.
  void Phase(const std::string& name);
  /// How much of the phase is done, 0 .. 100.
  void Percent(int percent);
  /// Nothing more is drawn on the line; the next text starts a new one.
  void End();

 private:
  void Draw(std::size_t columns);

  std::ostream& m_out;
  const core::base::Clock& m_clock;
  bool m_quiet;
  Stream m_stream;
  std::string m_phase;
  std::optional<int> m_percent;
  core::base::Clock::Duration m_started{};
  std::string m_drawn;
};

}  // namespace kestrin::cli
