// SPDX-License-Identifier: MIT
#include "cli/StatusLine.h"

#include <algorithm>
#include <iostream>

#include "core/base/Text.h"

namespace kestrin::cli {

StatusLine::StatusLine(const GlobalOptions& options)
    : m_out(options.json ? std::cerr : std::cout),
      m_quiet(options.quiet),
      m_stream(options.json ? Stream::Errors : Stream::Output) {}

StatusLine::~StatusLine() {
  if (!m_shown.empty()) m_out << std::endl;
}

void StatusLine::Show(const std::string& text) {
  if (m_quiet || text == m_shown) return;
  // Asked every time: the person may give the terminal another width.
  const std::size_t columns = TerminalWidth(m_stream);
  if (columns < 2) return;
  std::string line = core::base::Shown(text);
  while (core::base::Width(line) > columns - 1) line.pop_back();
  const std::size_t before = std::min(core::base::Width(core::base::Shown(m_shown)), columns - 1);
  const std::string rest(before - std::min(before, core::base::Width(line)), ' ');
  m_out << '\r' << line << rest << std::flush;
  m_shown = text;
}

}  // namespace kestrin::cli
