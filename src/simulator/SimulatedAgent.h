// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/base/Clock.h"
#include "core/base/EventPump.h"
#include "core/base/Result.h"
#include "core/device/THIDagent.h"
#include "simulator/BoardOptions.h"
#include "simulator/FaultPlan.h"
#include "simulator/UsbWire.h"
#include "simulator/VirtualBoard.h"

namespace kestrin::simulator {

/// A HID stack with one simulated board on it: one interface with the path "sim", variable and report 0 the command
/// (output), variable and report 1 the response (input).
///
/// The board can be unplugged and plugged in at any time, also while a report read waits; the notices about it are
/// raised by the next Refresh() outside of a transfer, once Start() was called.
class SimulatedAgent final : public core::device::THIDagent {
 public:
  /// A read that waits gives the person's interface its turn at least this often.
  static constexpr core::base::Clock::Duration kSlice = std::chrono::milliseconds(20);

  /// Where a board comes from that outlives this program.
  using BoardSource = std::function<core::base::Result<std::unique_ptr<VirtualBoard>>()>;

  /// The board that the options describe, in memory, plugged in. The clock must outlive the agent. Throws
  /// std::invalid_argument for options that name a folder or a file of movements: see store::CreateAgent().
  SimulatedAgent(const BoardOptions& options, core::base::Clock& clock, core::base::EventPump pump = {});
  /// The same for a board from elsewhere; of the options only wire and faults count. One that another program uses
  /// (the source fails with the kind InUse) is waited for: see AccessProblem() and Refresh(). Any other failure of the
  /// source is one of this method.
  static core::base::Result<std::unique_ptr<SimulatedAgent>> Create(const BoardOptions& options,
                                                                    core::base::Clock& clock,
                                                                    core::base::EventPump pump, BoardSource source);

  /// The board on the other end. Not while another program has it.
  [[nodiscard]] VirtualBoard& Board() { return *m_board; }
  /// How many reports the host has tried to write to it so far.
  [[nodiscard]] std::uint64_t ReportsWritten() const { return m_faults.Written(); }
  /// Pulls the board off: it loses its power and whatever it was about to answer.
  void Unplug();
  /// Plugs it in again.
  void Plug();

  void SetEvents(core::device::HidAgentEvents* events) override { m_events = events; }
  void Start() override { m_started = true; }
  void Stop() override;
  /// A simulated board takes every report at once.
  void Hurry() override {}
  void SetMatch(const core::device::HidMatch& match) override { m_match = match; }
  /// Finds nothing while the board is unplugged, while the notice of an unplugging is still to come, and once the board
  /// cannot keep its state.
  [[nodiscard]] bool SearchAndOpen() override;
  /// A board that another program has let go of counts as plugged in.
  void Refresh() override;
  /// Why the board can no longer keep its state in its folder, or that another program uses it.
  [[nodiscard]] std::string AccessProblem() const override { return m_board ? m_board->Problem() : m_refusal; }

  [[nodiscard]] std::int32_t NumberOfInterfaces() const override { return m_open ? 1 : 0; }
  void SelectInterface(std::int32_t number) override;
  [[nodiscard]] std::int32_t VendorId() const override;
  [[nodiscard]] std::int32_t ProductId() const override;
  [[nodiscard]] std::int32_t InterfaceHandle() const override;

  [[nodiscard]] std::int32_t FindVariable(core::device::ReportType type, std::int32_t usage,
                                          std::int32_t usagePage) const override;
  void SelectVariable(std::int32_t number) override;
  [[nodiscard]] std::int32_t VariableReportNumber() const override;
  [[nodiscard]] core::device::VariableAttributes Attributes() const override;
  void SetVariableName(const std::string& name) override;
  void SetVariableOption(std::int32_t option) override;
  /// The boards have no scale: the same as the unscaled value.
  [[nodiscard]] std::int32_t ScaledValue() const override { return UnScaledValue(); }
  void SetScaledValue(std::int32_t value) override { SetUnScaledValue(value); }
  [[nodiscard]] std::int32_t UnScaledValue() const override;
  void SetUnScaledValue(std::int32_t value) override;

  void SetElements(std::span<const std::uint8_t> values) override;
  void GetElements(std::span<std::uint8_t> values) const override;

  void SetCurrentRptNum(std::int32_t number) override { m_currentReport = number; }
  /// Also false when the board cannot keep its state any more.
  [[nodiscard]] bool WriteReport() override;
  [[nodiscard]] bool ReadReport() override;

 private:
  enum Number : std::int32_t { kCommand = 0, kResponse = 1 };
  /// What the HID stack has noticed and nobody was told yet.
  enum class Notice { Removal, Arrival };

  SimulatedAgent(const BoardOptions& options, core::base::Clock& clock, core::base::EventPump pump, BoardSource source,
                 std::unique_ptr<VirtualBoard> board);

  /// Takes the board from its source unless it is there already.
  core::base::Result<> TakeBoard();
  [[nodiscard]] bool Matches() const;
  void RequireInterface() const;
  [[nodiscard]] std::span<std::uint8_t> Values();
  [[nodiscard]] std::span<const std::uint8_t> Values() const;
  void Deliver(bool flip);
  [[nodiscard]] std::optional<VirtualBoard::Answer> WaitForAnswer();
  void Pass(std::size_t bytes);

  core::base::Clock& m_clock;
  core::base::EventPump m_pump;
  BoardSource m_source;
  /// Empty while another program has it.
  std::unique_ptr<VirtualBoard> m_board;
  std::string m_refusal;
  FaultPlan m_faults;
  std::optional<UsbWire> m_wire;

  core::device::HidAgentEvents* m_events = nullptr;
  core::device::HidMatch m_match;
  std::vector<Notice> m_notices;
  bool m_started = false;
  bool m_plugged = true;
  /// The interface is open; after an unplugging until its notice was raised.
  bool m_open = false;
  /// The open interface reaches the board.
  bool m_connected = false;
  bool m_inTransfer = false;
  bool m_delivering = false;
  std::int32_t m_handle = 0;

  bool m_selected = false;
  std::int32_t m_currentVariable = -1;
  std::int32_t m_currentReport = -1;
  std::array<std::uint8_t, core::device::kCommandSize> m_command{};
  VirtualBoard::Answer m_response{};
};

}  // namespace kestrin::simulator
