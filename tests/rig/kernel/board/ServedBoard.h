// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "rig/kernel/board/BoardPlan.h"
#include "simulator/VirtualBoard.h"

namespace kestrin::rig {

/// The project's simulated board as reports of a HID device reach it and leave it, with the plan's misbehaviour. Not
/// for several threads at once.
class ServedBoard {
 public:
  /// What comes of a report.
  enum class Fate {
    Taken,
    /// The board is to be pulled out now.
    Unplug,
  };

  /// `board` is the plan's firmware.
  ServedBoard(BoardPlan plan, std::unique_ptr<simulator::VirtualBoard> board);

  [[nodiscard]] const BoardPlan& Plan() const { return m_plan; }

  /// The board is plugged in: reports are counted anew.
  void Plugged();
  /// The board has lost its power. Says in the log how many reports of which sizes came since it was plugged in.
  void Unplugged();

  /// A report from the host, as the kernel delivered it by `way`: with its id in front, or without one and then perhaps
  /// with a 0 in front. A report that no board would get is told as "WRONG" in the log and otherwise ignored.
  Fate Take(std::span<const std::uint8_t> report, const std::string& way);
  /// The next answer that is ready, as an input report of the device.
  [[nodiscard]] std::optional<std::vector<std::uint8_t>> NextAnswer();
  /// How long until an answer may be ready without another report; empty for ever.
  [[nodiscard]] std::optional<std::chrono::milliseconds> Busy() const;
  /// The answer that was held back may go.
  void LetGo() { m_holding = false; }

 private:
  /// The command that a report carries, without an id; empty when it is none.
  [[nodiscard]] std::span<const std::uint8_t> CommandOf(std::span<const std::uint8_t> report) const;

  BoardPlan m_plan;
  std::unique_ptr<simulator::VirtualBoard> m_board;
  /// Since the start, and since the board was plugged in.
  std::uint64_t m_allReports = 0;
  std::uint64_t m_reports = 0;
  std::size_t m_pluggings = 0;
  bool m_holding = false;
  std::map<std::size_t, std::uint64_t> m_sizes;
};

}  // namespace kestrin::rig
