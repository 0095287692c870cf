#include "cli/ProgressLine.h"

#include <algorithm>
#include <iostream>

#include "base/TimeLeft.h"
#include "cli/Terminal.h"

namespace kestrin::cli {

namespace {

constexpr int kBarWidth = 30;
constexpr std::size_t kPhaseWidth = 24;

}  // namespace

ProgressLine::ProgressLine(const GlobalOptions& options, const base::Clock& clock)
    : m_out(options.json ? std::cerr : std::cout),
      m_clock(clock),
      m_quiet(options.quiet),
      m_terminal(options.json ? ErrorsAreTerminal() : OutputIsTerminal()) {}

ProgressLine::~ProgressLine() { End(); }

void ProgressLine::Phase(const std::string& name) {
  if (m_quiet) return;
  End();
  m_phase = name;
  m_percent.reset();
  m_started = m_clock.Now();
  if (m_terminal)
    Draw();
  else
    m_out << m_phase << std::endl;
}

void ProgressLine::Percent(int percent) {
  if (m_quiet || !m_terminal || m_phase.empty()) return;
  m_percent = std::clamp(percent, 0, 100);
  Draw();
}

void ProgressLine::End() {
  if (!m_drawn.empty()) m_out << std::endl;
  m_drawn.clear();
  m_phase.clear();
}

void ProgressLine::Draw() {
  std::string line = m_phase;
  if (m_percent) {
    line.resize(std::max(line.size(), kPhaseWidth), ' ');
    const auto full = static_cast<std::size_t>(*m_percent * kBarWidth / 100);
    const std::string number = std::to_string(*m_percent);
    line += " [" + std::string(full, '#') + std::string(kBarWidth - full, '-') + "] " +
            std::string(3 - number.size(), ' ') + number + " %" + TimeLeft();
  }
  // Thousands of blocks change nothing that can be seen.
  if (line == m_drawn) return;
  const std::string rest(m_drawn.size() > line.size() ? m_drawn.size() - line.size() : 0, ' ');
  m_out << '\r' << line << rest << std::flush;
  m_drawn = line;
}

std::string ProgressLine::TimeLeft() const {
  const auto left = base::SecondsLeft(m_clock.Now() - m_started, *m_percent);
  return left ? "  " + base::MinutesAndSeconds(*left) + " left" : "";
}

}  // namespace kestrin::cli
