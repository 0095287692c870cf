// SPDX-License-Identifier: MIT
#include "cli/ProgressLine.h"

#include <algorithm>
#include <iostream>

#include "cli/ProgressText.h"
#include "core/base/Text.h"
#include "core/base/TimeLeft.h"

namespace kestrin::cli {

ProgressLine::ProgressLine(const GlobalOptions& options, const core::base::Clock& clock)
    : m_out(options.json ? std::cerr : std::cout),
      m_clock(clock),
      m_quiet(options.quiet),
      m_stream(options.json ? Stream::Errors : Stream::Output) {}

ProgressLine::~ProgressLine() { End(); }

void ProgressLine::Phase(const std::string& name) {
  if (m_quiet) return;
  End();
  m_phase = core::base::Shown(name);
  m_percent.reset();
  m_started = m_clock.Now();
  // Asked every time: the person may give the terminal another width.
  if (const std::size_t columns = TerminalWidth(m_stream); columns > 0)
    Draw(columns);
  else
    m_out << m_phase << std::endl;
}

void ProgressLine::Percent(int percent) {
  if (m_quiet || m_phase.empty()) return;
  m_percent = std::clamp(percent, 0, 100);
  if (const std::size_t columns = TerminalWidth(m_stream); columns > 0) Draw(columns);
}

void ProgressLine::End() {
  if (!m_drawn.empty()) m_out << std::endl;
  m_drawn.clear();
  m_phase.clear();
}

void ProgressLine::Draw(std::size_t columns) {
  const auto left = m_percent ? core::base::SecondsLeft(m_clock.Now() - m_started, *m_percent) : std::nullopt;
  const std::string line = ProgressText({m_phase, m_percent, left}, columns);
  // Thousands of blocks change nothing that can be seen.
  if (line == m_drawn) return;
  const std::size_t before = std::min(core::base::Width(m_drawn), columns - 1);
  const std::string rest(before - std::min(before, core::base::Width(line)), ' ');
  m_out << '\r' << line << rest << std::flush;
  m_drawn = line;
}

}  // namespace kestrin::cli
