// SPDX-License-Identifier: MIT
#include "rig/kernel/board/ServedBoard.h"

#include <algorithm>
#include <csignal>
#include <thread>
#include <utility>

#include "core/device/Protocol.h"
#include "rig/kernel/board/Log.h"

namespace kestrin::rig {

namespace {

using simulator::VirtualBoard;

/// As NumberedBoardDescriptor() has them.
constexpr std::uint8_t kOutputId = 1;
constexpr std::uint8_t kInputId = 2;

VirtualBoard::Time Now() {
  return std::chrono::duration_cast<VirtualBoard::Time>(std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace

ServedBoard::ServedBoard(BoardPlan plan, std::unique_ptr<VirtualBoard> board)
    : m_plan(std::move(plan)), m_board(std::move(board)) {}

void ServedBoard::Plugged() {
  ++m_pluggings;
  m_reports = 0;
  m_sizes.clear();
}

void ServedBoard::Unplugged() {
  m_board->LosePower();
  m_holding = false;
  std::string sizes;
  for (const auto& [size, count] : m_sizes) sizes += ", " + std::to_string(count) + " of " + std::to_string(size);
  Log("UNPLUGGED after " + std::to_string(m_reports) + " reports" + sizes);
}

std::span<const std::uint8_t> ServedBoard::CommandOf(std::span<const std::uint8_t> report) const {
  constexpr std::size_t kCommand = core::device::kCommandSize;
  const bool numbered = m_plan.kind == BoardPlan::Kind::Numbered;
  if (report.size() == kCommand + 1 && report[0] == (numbered ? kOutputId : 0)) return report.subspan(1);
  if (report.size() == kCommand && !numbered) return report;
  return {};
}

ServedBoard::Fate ServedBoard::Take(std::span<const std::uint8_t> report, const std::string& way) {
  ++m_allReports;
  ++m_reports;
  if (++m_sizes[report.size()] == 1) Log("FIRST of " + std::to_string(report.size()) + " bytes by " + way);
  if (m_pluggings > 0 && m_pluggings <= m_plan.unplugAt.size() && m_reports == m_plan.unplugAt[m_pluggings - 1])
    return Fate::Unplug;
  if (m_allReports == m_plan.hangAt) {
    Log("HANGS at report " + std::to_string(m_reports));
    std::raise(SIGSTOP);
  }
  if (m_plan.silentAt != 0 && m_allReports >= m_plan.silentAt) {
    if (m_allReports == m_plan.silentAt) Log("SILENT from report " + std::to_string(m_reports) + " on");
    return Fate::Taken;
  }
  const std::span<const std::uint8_t> command = CommandOf(report);
  if (command.empty()) {
    Log("WRONG report of " + std::to_string(report.size()) + " bytes by " + way);
    return Fate::Taken;
  }
  m_board->Receive(command, Now());
  if (command[0] == static_cast<std::uint8_t>(core::device::Command::ClearFlash)) Log("ERASES");
  if (m_allReports == m_plan.holdAt) {
    m_holding = true;
    Log("HOLDS the answer to report " + std::to_string(m_reports));
  }
  return Fate::Taken;
}

std::optional<std::vector<std::uint8_t>> ServedBoard::NextAnswer() {
  if (m_holding) return std::nullopt;
  const auto answer = m_board->NextAnswer(Now());
  if (!answer) return std::nullopt;
  std::vector<std::uint8_t> report(answer->begin(), answer->end());
  if (m_plan.kind == BoardPlan::Kind::Numbered) report.insert(report.begin(), kInputId);
  if (m_plan.delay.count() != 0) std::this_thread::sleep_for(m_plan.delay);
  return report;
}

std::optional<std::chrono::milliseconds> ServedBoard::Busy() const {
  const auto end = m_board->BusyUntil();
  if (!end) return std::nullopt;
  return std::max(std::chrono::milliseconds(0), std::chrono::ceil<std::chrono::milliseconds>(*end - Now()));
}

}  // namespace kestrin::rig
