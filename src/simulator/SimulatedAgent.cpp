// SPDX-License-Identifier: MIT
#include "simulator/SimulatedAgent.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "core/base/RaisedFlag.h"

namespace kestrin::simulator {

using core::device::AgentError;
using core::device::ReportType;

namespace {

constexpr const char* kPath = "sim";

/// The usages of the two variables, and the reports they stand in, by number.
struct Variable {
  ReportType type;
  std::int32_t usage;
};
constexpr Variable kVariables[] = {{ReportType::Output, core::device::kCommandUsage},
                                   {ReportType::Input, core::device::kResponseUsage}};

}  // namespace

SimulatedAgent::SimulatedAgent(const BoardOptions& options, core::base::Clock& clock, core::base::EventPump pump)
    : SimulatedAgent(options, clock, std::move(pump), nullptr,
                     std::make_unique<VirtualBoard>(options.Applied({}), options.erase)) {
  if (!options.dir.empty() || !options.motion.empty())
    throw std::invalid_argument("a board in memory has no folder and reads no file");
  m_board->MoveBy(options.sensor);
}

core::base::Result<std::unique_ptr<SimulatedAgent>> SimulatedAgent::Create(const BoardOptions& options,
                                                                           core::base::Clock& clock,
                                                                           core::base::EventPump pump,
                                                                           BoardSource source) {
  std::unique_ptr<SimulatedAgent> agent(
      new SimulatedAgent(options, clock, std::move(pump), std::move(source), nullptr));
  if (const core::base::Result<> taken = agent->TakeBoard();
      !taken && taken.Why().kind != core::base::FailureKind::InUse)
    return taken.Why();
  return agent;
}

SimulatedAgent::SimulatedAgent(const BoardOptions& options, core::base::Clock& clock, core::base::EventPump pump,
                               BoardSource source, std::unique_ptr<VirtualBoard> board)
    : m_clock(clock),
      m_pump(std::move(pump)),
      m_source(std::move(source)),
      m_board(std::move(board)),
      m_faults(options.faults) {
  if (options.wire == BoardOptions::Wire::Usb) m_wire.emplace(clock);
}

core::base::Result<> SimulatedAgent::TakeBoard() {
  if (m_board) return {};
  core::base::Result<std::unique_ptr<VirtualBoard>> board = m_source();
  m_refusal = board.Text();
  if (!board) return board.Why();
  m_board = *std::move(board);
  return {};
}

void SimulatedAgent::Unplug() {
  if (!std::exchange(m_plugged, false)) return;
  m_connected = false;
  if (m_board) m_board->LosePower();
  m_notices.push_back(Notice::Removal);
}

void SimulatedAgent::Plug() {
  if (!std::exchange(m_plugged, true)) m_notices.push_back(Notice::Arrival);
}

void SimulatedAgent::Stop() {
  m_started = false;
  m_open = false;
  m_connected = false;
  m_selected = false;
  m_notices.clear();
}

bool SimulatedAgent::Matches() const {
  return (!m_match.SearchOnVID || m_match.VID_To_Match == core::device::kBoardVendorId) &&
         (!m_match.SearchOnPID || m_match.PID_To_Match == core::device::kBoardProductId);
}

bool SimulatedAgent::SearchAndOpen() {
  const bool awaitsNotice = m_open && !m_connected;
  if (!m_plugged || awaitsNotice || !Matches() || !TakeBoard() || !AccessProblem().empty()) return false;
  if (!m_open) {
    m_open = true;
    m_connected = true;
    m_selected = false;
    m_currentVariable = -1;
    m_currentReport = -1;
    m_command.fill(0);
    m_response.fill(0);
    ++m_handle;
    if (m_events != nullptr)
      m_events->InterfaceOpened(m_handle, static_cast<std::int32_t>(m_response.size()),
                                static_cast<std::int32_t>(m_command.size()), kPath);
  }
  return m_open;
}

void SimulatedAgent::Refresh() {
  // A notice may make its receiver search, stop, unplug or look: each is off the list before it is raised, and is told
  // to its end before the next.
  if (m_delivering) return;
  const core::base::RaisedFlag delivering(m_delivering);
  if (m_started && !m_board && TakeBoard()) m_notices.push_back(Notice::Arrival);
  while (m_started && !m_inTransfer && !m_notices.empty()) {
    const Notice notice = m_notices.front();
    m_notices.erase(m_notices.begin());
    if (notice == Notice::Arrival) {
      if (m_events != nullptr && Matches()) m_events->DeviceArrival(kPath);
    } else if (m_open) {
      m_open = false;
      m_selected = false;
      if (m_events != nullptr) m_events->InterfaceClosed(m_handle, kPath);
      if (m_events != nullptr) m_events->DeviceRemoved(m_handle, kPath);
    }
  }
}

void SimulatedAgent::RequireInterface() const {
  if (!m_selected) throw AgentError("no interface is selected");
}

void SimulatedAgent::SelectInterface(std::int32_t number) {
  if (number != 0 || !m_open) throw AgentError("there is no interface " + std::to_string(number));
  m_selected = true;
}

std::int32_t SimulatedAgent::VendorId() const {
  RequireInterface();
  return core::device::kBoardVendorId;
}

std::int32_t SimulatedAgent::ProductId() const {
  RequireInterface();
  return core::device::kBoardProductId;
}

std::int32_t SimulatedAgent::InterfaceHandle() const {
  RequireInterface();
  return m_handle;
}

std::int32_t SimulatedAgent::FindVariable(ReportType type, std::int32_t usage, std::int32_t usagePage) const {
  RequireInterface();
  const auto found = std::find_if(std::begin(kVariables), std::end(kVariables), [&](const Variable& variable) {
    return variable.type == type && variable.usage == usage && usagePage == core::device::kVendorDefinedPage;
  });
  return found == std::end(kVariables) ? -1 : static_cast<std::int32_t>(found - std::begin(kVariables));
}

void SimulatedAgent::SelectVariable(std::int32_t number) {
  RequireInterface();
  if (number != kCommand && number != kResponse) throw AgentError("there is no variable " + std::to_string(number));
  m_currentVariable = number;
}

std::span<const std::uint8_t> SimulatedAgent::Values() const {
  RequireInterface();
  if (m_currentVariable < 0) throw AgentError("no variable is selected");
  if (m_currentVariable == kCommand) return m_command;
  return m_response;
}

std::span<std::uint8_t> SimulatedAgent::Values() {
  const auto values = std::as_const(*this).Values();
  return {const_cast<std::uint8_t*>(values.data()), values.size()};
}

std::int32_t SimulatedAgent::VariableReportNumber() const {
  static_cast<void>(Values());
  return m_currentVariable;
}

core::device::VariableAttributes SimulatedAgent::Attributes() const {
  static_cast<void>(Values());
  // What the board's report descriptor says of both fields: "data, variable, absolute", bytes from 0 to 255.
  core::device::VariableAttributes attributes;
  attributes.NoWrap = true;
  attributes.Linear = true;
  attributes.BitsNotBuffer = true;
  attributes.AbsoluteNotRelative = true;
  attributes.PhysicalMaximum = 255;
  attributes.LogicalMaximum = 255;
  attributes.SizeInBits = 8;
  return attributes;
}

void SimulatedAgent::SetVariableName(const std::string&) { static_cast<void>(Values()); }

void SimulatedAgent::SetVariableOption(std::int32_t) { static_cast<void>(Values()); }

std::int32_t SimulatedAgent::UnScaledValue() const { return Values()[0]; }

void SimulatedAgent::SetUnScaledValue(std::int32_t value) { Values()[0] = static_cast<std::uint8_t>(value); }

void SimulatedAgent::SetElements(std::span<const std::uint8_t> values) {
  const std::span<std::uint8_t> field = Values();
  std::copy_n(values.begin(), std::min(values.size(), field.size()), field.begin());
}

void SimulatedAgent::GetElements(std::span<std::uint8_t> values) const {
  const std::span<const std::uint8_t> field = Values();
  const std::size_t count = std::min(values.size(), field.size());
  std::copy_n(field.begin(), count, values.begin());
  std::fill(values.begin() + static_cast<std::ptrdiff_t>(count), values.end(), std::uint8_t{0});
}

void SimulatedAgent::Pass(std::size_t bytes) {
  if (m_wire) m_wire->Transfer(bytes);
}

void SimulatedAgent::Deliver(bool flip) {
  const core::base::Clock::Duration now = m_clock.Now();
  const std::span<const std::uint8_t> data = VirtualBoard::FlashData(m_command);
  if (!flip || data.empty()) {
    m_board->Receive(m_command, now);
    return;
  }
  VirtualBoard::Report damaged = m_command;
  const auto middle = static_cast<std::size_t>(data.data() - m_command.data()) + data.size() / 2;
  damaged[middle] ^= 1;
  m_board->Receive(damaged, now);
}

bool SimulatedAgent::WriteReport() {
  if (!m_selected || !m_connected || m_currentReport != kCommand) return false;
  const core::base::RaisedFlag transfer(m_inTransfer);
  while (m_board->NextAnswer(m_clock.Now())) {
    // Came too late for the command that it was for.
  }
  const FaultPlan::Verdict verdict = m_faults.NextWrite();
  if (verdict.unplug) Unplug();
  if (verdict.fails || !m_connected) return false;
  Pass(m_command.size());
  Deliver(verdict.flip);
  return m_board->Problem().empty();
}

bool SimulatedAgent::ReadReport() {
  if (!m_selected || !m_connected || m_currentReport != kResponse) return false;
  const FaultPlan::Verdict verdict = m_faults.NextRead();
  if (verdict.unplug) Unplug();
  // The answer stays where it is, as one that comes just too late would.
  if (verdict.fails) return false;
  const std::optional<VirtualBoard::Answer> answer = WaitForAnswer();
  if (answer) m_response = *answer;
  if (m_events != nullptr && answer) m_events->ReportArrived(m_handle, kResponse);
  if (m_events != nullptr && !answer && m_connected) m_events->ReportTimedOut(m_handle, kResponse);
  return answer.has_value();
}

std::optional<VirtualBoard::Answer> SimulatedAgent::WaitForAnswer() {
  const core::base::RaisedFlag transfer(m_inTransfer);
  const core::base::Clock::Duration end = m_clock.Now() + std::chrono::milliseconds(kTimeOut);
  while (m_connected) {
    const core::base::Clock::Duration now = m_clock.Now();
    if (const auto answer = m_board->NextAnswer(now)) {
      Pass(answer->size());
      return answer;
    }
    if (now >= end) break;
    core::base::Clock::Duration wake = std::min(now + kSlice, end);
    if (const auto idle = m_board->BusyUntil()) wake = std::min(wake, *idle);
    m_clock.Wait(wake - now);
    core::base::Pump(m_pump);
  }
  return std::nullopt;
}

}  // namespace kestrin::simulator
