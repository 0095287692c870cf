// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "core/base/Clock.h"
#include "core/device/Protocol.h"
#include "simulator/BoardKeeper.h"
#include "simulator/BoardState.h"
#include "simulator/SensorSource.h"

namespace kestrin::simulator {

/// A Kestrin board as its firmware behaves: takes command reports, gives answer reports (core/device/Protocol.h). It
/// knows nothing of how reports travel, so it serves behind an agent as well as behind a HID device node.
///
/// Every model answers every command; unknown codes get no answer. Of each report only the elements of the command
/// itself count: hosts leave earlier commands' bytes in the rest. Numbers are sent most significant byte first.
///
/// - Flash: 8 MiB for model 64, else 4 MiB, erased byte 0xFF. A write can only clear bits; only an erase sets them. The
///   answer to a write is the sum of the data bytes as they arrived, whatever the flash then holds. Addresses beyond
///   the flash: nothing is written, and they count nothing in a checksum.
/// - An erase also makes each detection parameter 255. The firmware has one thread: while it erases it takes reports
///   but works them off afterwards, in order. Done, it answers 10, 10 once. Flash and parameters are gone from its
///   beginning on, so that a board that loses power in the middle holds nothing.
/// - The acceleration is that of a board lying still, unless something moves it: see MoveBy().
class VirtualBoard {
 public:
  using Time = core::base::Clock::Duration;
  using Answer = std::array<std::uint8_t, core::device::kResponseSize>;
  using Report = std::array<std::uint8_t, core::device::kCommandSize>;
  using ReportView = std::span<const std::uint8_t, core::device::kCommandSize>;

  /// The flash of a board of that model in bytes.
  [[nodiscard]] static std::size_t FlashSize(std::uint16_t id);

  /// A board that holds its state in memory alone, with an erased flash.
  explicit VirtualBoard(const BoardState& state = {}, Time eraseTime = {});
  /// A board with FlashSize() bytes of flash that tells its keeper what it holds.
  VirtualBoard(const BoardState& state, Time eraseTime, std::vector<std::uint8_t> flash,
               std::unique_ptr<BoardKeeper> keeper);

  /// The bytes that a report brings to the flash; none when it is no write command. A count beyond the report's end
  /// brings no more than the report carries.
  [[nodiscard]] static std::span<const std::uint8_t> FlashData(ReportView report);

  /// A command report that arrives at `now`: 1,028 bytes, or 1,029 with a leading report id 0 as some HID stacks
  /// deliver it. Reports of any other length are ignored.
  void Receive(std::span<const std::uint8_t> report, Time now);
  /// Takes the next answer that is ready at `now`; empty when there is none (yet). Times never go back from one call to
  /// the next.
  [[nodiscard]] std::optional<Answer> NextAnswer(Time now);
  /// The end of an erase that is under way; empty when the board is idle. Before that moment no new answer gets ready.
  [[nodiscard]] std::optional<Time> BusyUntil() const { return m_eraseEnd; }
  /// What the sensor feels from now on; empty for a board lying still. Values outside what a sensor can tell become
  /// the nearest ones inside.
  void MoveBy(SensorSource source) { m_sensor = std::move(source); }
  /// The board loses its power: answers, reports not yet worked off and an erase under way are gone, all else stays.
  void LosePower();

  [[nodiscard]] const BoardState& State() const { return m_state; }
  [[nodiscard]] std::span<const std::uint8_t> Flash() const;
  /// Why the state can no longer be kept; "" while all is well.
  [[nodiscard]] std::string Problem() const { return m_keeper ? m_keeper->Problem() : ""; }

 private:
  /// Ends an erase whose time is over and works off what arrived during it.
  void Advance(Time now);
  void Execute(ReportView report, Time now);

  void Put(std::uint8_t first, std::uint8_t second) { m_answers.push_back({first, second}); }
  void Put16(std::uint16_t value);
  void Acknowledge();
  /// The state has changed: it is kept, and the host told so.
  void Accept();
  void KeepState();

  void Erase(Time now);
  void Write(std::uint32_t address, std::span<const std::uint8_t> data);
  [[nodiscard]] std::uint16_t FlashSum(std::uint32_t address, std::uint32_t count) const;
  void AnswerSensor();
  void AnswerPulse(std::size_t set);
  void TakePulse(ReportView report, std::size_t set);

  BoardState m_state;
  /// Empty while it is erased and nobody has looked: most hosts only ask who the board is, and filling it takes longer
  /// than all their commands.
  mutable std::vector<std::uint8_t> m_flash;
  std::unique_ptr<BoardKeeper> m_keeper;
  SensorSource m_sensor;
  Time m_eraseTime;
  std::optional<Time> m_eraseEnd;
  std::deque<Report> m_waiting;
  /// Answers not taken yet begin at m_nextAnswer; the front is emptied all at once, so that the memory is used again.
  std::vector<Answer> m_answers;
  std::size_t m_nextAnswer = 0;
};

}  // namespace kestrin::simulator
