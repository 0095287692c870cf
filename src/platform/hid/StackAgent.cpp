// SPDX-License-Identifier: MIT
#include "platform/hid/StackAgent.h"

#include <algorithm>
#include <utility>

#include "core/base/RaisedFlag.h"
#include "platform/hid/AccessAdvice.h"
#include "platform/hid/BoardList.h"

namespace kestrin::platform::hid {

StackAgent::StackAgent(std::unique_ptr<HidStack> stack, MonitorFactory makeMonitor, const core::base::Clock& clock,
                       core::base::EventPump pump, std::string onlyPath)
    : m_stack(std::move(stack)),
      m_makeMonitor(std::move(makeMonitor)),
      m_clock(clock),
      m_pump(std::move(pump)),
      m_onlyPath(std::move(onlyPath)) {}

StackAgent::~StackAgent() { CloseAll(); }

void StackAgent::Start() {
  m_hurry = false;
  if (!m_monitor) m_monitor = m_makeMonitor();
}

void StackAgent::Stop() {
  m_stopWanted = true;
  StopIfWanted();
}

void StackAgent::StopIfWanted() {
  if (m_stopWanted && !m_inTransfer && !m_searching) CloseAll();
}

void StackAgent::CloseAll() {
  m_stopWanted = false;
  m_monitor.reset();
  m_pending.clear();
  m_refused.clear();
  m_interfaces.clear();
  m_current = Selection();
}

// --- Searching ---

bool StackAgent::SearchAndOpen() {
  if (!m_inTransfer && !m_searching && m_match.SearchOnVID && m_match.SearchOnPID) {
    {
      const core::base::RaisedFlag searching(m_searching);
      OpenMatching();
    }
    StopIfWanted();
  }
  return !m_interfaces.empty();
}

void StackAgent::OpenMatching() {
  std::vector<HidNode> nodes = m_stack->Enumerate(m_match.VID_To_Match, m_match.PID_To_Match);
  std::sort(nodes.begin(), nodes.end(), ComesBefore);
  m_refused.clear();
  for (const HidNode& node : nodes) {
    if (m_stopWanted) return;
    if (IsOpen(node.path) || !IsWanted(node.path)) continue;
    const core::base::Result<> opened = Open(node);
    if (!opened) Refuse(node, opened.Why());
  }
}

std::optional<core::base::FailureKind> StackAgent::LookAt(const HidNode& node) {
  const core::base::Result<> access = m_stack->Look(node);
  if (access) return std::nullopt;
  return access.Why().kind;
}

void StackAgent::Refuse(const HidNode& node, const core::base::Failure& why) {
  using core::base::FailureKind;
  // What a look sees as well may be over by the time of the look; what it does not see shall not change by itself.
  const bool shows = why.kind == FailureKind::InUse || why.kind == FailureKind::NotPermitted;
  const std::optional<FailureKind> look = shows ? why.kind : LookAt(node);
  if (look != FailureKind::NotFound) m_refused.push_back({node, why, look});
}

std::string StackAgent::AccessProblem() const {
  return m_refused.empty() ? "" : AccessAdvice(m_refused.front().node.path, m_refused.front().why);
}

bool StackAgent::IsOpen(const std::string& path) const {
  return std::any_of(m_interfaces.begin(), m_interfaces.end(),
                     [&](const std::unique_ptr<HidInterface>& open) { return open->Node().path == path; });
}

core::base::Result<> StackAgent::Open(const HidNode& node) {
  core::base::Result<std::unique_ptr<HidConnection>> connection = m_stack->Open(node);
  if (!connection) return connection.Why();
  core::base::Result<ReportDescriptor> descriptor = ReportDescriptor::Read((*connection)->ReportDescriptor());
  if (!descriptor) return descriptor.Why();

  const auto lengthIn = static_cast<std::int32_t>(descriptor->LongestReport(core::device::ReportType::Input));
  const auto lengthOut = static_cast<std::int32_t>(descriptor->LongestReport(core::device::ReportType::Output));
  const std::int32_t handle = ++m_lastHandle;
  m_interfaces.push_back(std::make_unique<HidInterface>(handle, node, *std::move(connection), *std::move(descriptor)));
  if (m_events != nullptr) m_events->InterfaceOpened(handle, lengthIn, lengthOut, node.path);
  return {};
}

// --- Coming and going ---

void StackAgent::Refresh() {
  if (m_inTransfer || m_delivering || m_searching) return;
  const core::base::RaisedFlag delivering(m_delivering);
  CollectNotices();
  CollectChanged();
  while (!m_pending.empty()) {
    const PendingEvent event = std::move(m_pending.front());
    m_pending.pop_front();
    Deliver(event);
  }
}

void StackAgent::CollectNotices() {
  if (!m_monitor) return;
  std::vector<std::string> removed;
  std::vector<std::string> arrived;
  for (DeviceNotice& notice : m_monitor->Collect(m_match.VID_To_Match, m_match.PID_To_Match)) {
    if (notice.kind == DeviceNotice::Kind::Arrived) {
      arrived.push_back(std::move(notice.path));
    } else {
      arrived.erase(std::remove(arrived.begin(), arrived.end(), notice.path), arrived.end());
      removed.push_back(std::move(notice.path));
    }
  }

  std::vector<PendingEvent> gone;
  for (const std::unique_ptr<HidInterface>& open : m_interfaces) {
    const std::string& path = open->Node().path;
    const bool suspicious = open->TakeSuspicion();
    const bool noticed = std::find(removed.begin(), removed.end(), path) != removed.end();
    // A notice alone does not do: a late one may mean the device that had the path before.
    if ((suspicious || noticed) && open->IsGone()) gone.push_back({PendingEvent::Kind::Closed, open->Handle(), path});
  }
  m_pending.insert(m_pending.end(), gone.begin(), gone.end());
  for (PendingEvent& event : gone) {
    event.kind = PendingEvent::Kind::Removed;
    m_pending.push_back(event);
  }
  for (std::string& path : arrived) m_pending.push_back({PendingEvent::Kind::Arrived, 0, std::move(path)});
}

void StackAgent::CollectChanged() {
  std::erase_if(m_refused, [this](const Refusal& refusal) {
    const std::optional<core::base::FailureKind> look = LookAt(refusal.node);
    const bool changed = look != refusal.look;
    if (changed && look != core::base::FailureKind::NotFound)
      m_pending.push_back({PendingEvent::Kind::Arrived, 0, refusal.node.path});
    return changed;
  });
}

void StackAgent::Deliver(const PendingEvent& event) {
  switch (event.kind) {
    case PendingEvent::Kind::Closed:
      if (Close(event.handle) && m_events != nullptr) m_events->InterfaceClosed(event.handle, event.path);
      break;
    case PendingEvent::Kind::Removed:
      if (m_events != nullptr) m_events->DeviceRemoved(event.handle, event.path);
      break;
    case PendingEvent::Kind::Arrived:
      // A search may have been quicker than the notice.
      if (!IsOpen(event.path) && IsWanted(event.path) && m_events != nullptr) {
        m_events->DeviceArrival(event.path);
      }
      break;
  }
}

bool StackAgent::Close(std::int32_t handle) {
  const auto found = std::find_if(m_interfaces.begin(), m_interfaces.end(),
                                  [&](const std::unique_ptr<HidInterface>& open) { return open->Handle() == handle; });
  if (found == m_interfaces.end()) return false;
  const auto number = static_cast<std::int32_t>(found - m_interfaces.begin());
  m_interfaces.erase(found);
  if (m_current.interfaceNumber == number) m_current = Selection();
  if (m_current.interfaceNumber > number) --m_current.interfaceNumber;
  return true;
}

// --- Selecting ---

std::int32_t StackAgent::NumberOfInterfaces() const { return static_cast<std::int32_t>(m_interfaces.size()); }

void StackAgent::SelectInterface(std::int32_t number) {
  if (number < 0 || number >= NumberOfInterfaces()) {
    throw core::device::AgentError("There is no open interface of number " + std::to_string(number));
  }
  if (number == m_current.interfaceNumber) return;
  m_current = Selection();
  m_current.interfaceNumber = number;
}

HidInterface& StackAgent::Interface() const {
  if (m_current.interfaceNumber < 0) throw core::device::AgentError("No interface is selected");
  return *m_interfaces[static_cast<std::size_t>(m_current.interfaceNumber)];
}

std::int32_t StackAgent::FindVariable(core::device::ReportType type, std::int32_t usage, std::int32_t usagePage) const {
  return Interface().Descriptor().Find(type, usage, usagePage);
}

void StackAgent::SelectVariable(std::int32_t number) {
  if (number < 0 || static_cast<std::size_t>(number) >= Interface().Descriptor().Variables().size()) {
    throw core::device::AgentError("There is no variable of number " + std::to_string(number));
  }
  m_current.variable = number;
}

std::size_t StackAgent::Variable() const {
  if (m_current.variable < 0) throw core::device::AgentError("No variable is selected");
  return static_cast<std::size_t>(m_current.variable);
}

std::int32_t StackAgent::VariableReportNumber() const {
  const std::size_t variable = Variable();
  return static_cast<std::int32_t>(Interface().Descriptor().Variables()[variable].report);
}

core::device::VariableAttributes StackAgent::Attributes() const {
  const std::size_t variable = Variable();
  return Interface().Attributes(variable);
}

void StackAgent::SetVariableName(const std::string&) { static_cast<void>(Variable()); }

void StackAgent::SetVariableOption(std::int32_t) { static_cast<void>(Variable()); }

std::int32_t StackAgent::ScaledValue() const {
  const std::size_t variable = Variable();
  return Interface().ScaledValue(variable);
}

void StackAgent::SetScaledValue(std::int32_t value) {
  const std::size_t variable = Variable();
  Interface().SetScaledValue(variable, value);
}

std::int32_t StackAgent::UnScaledValue() const {
  const std::size_t variable = Variable();
  return Interface().UnScaledValue(variable);
}

void StackAgent::SetUnScaledValue(std::int32_t value) {
  const std::size_t variable = Variable();
  Interface().SetUnScaledValue(variable, value);
}

void StackAgent::SetElements(std::span<const std::uint8_t> values) {
  const std::size_t variable = Variable();
  Interface().SetElements(variable, values);
}

void StackAgent::GetElements(std::span<std::uint8_t> values) const {
  const std::size_t variable = Variable();
  Interface().GetElements(variable, values);
}

// --- Transfers ---

std::optional<core::device::ReportType> StackAgent::CurrentReportType() const {
  if (m_current.interfaceNumber < 0 || m_current.report < 0) return std::nullopt;
  const auto& reports = Interface().Descriptor().Reports();
  const auto number = static_cast<std::size_t>(m_current.report);
  if (number >= reports.size()) return std::nullopt;
  return reports[number].type;
}

bool StackAgent::WriteReport() {
  const auto type = CurrentReportType();
  if (m_inTransfer || !type || *type == core::device::ReportType::Input) return false;
  if (*type == core::device::ReportType::Feature)
    return Interface().WriteFeature(static_cast<std::size_t>(m_current.report));
  return WaitForOutput();
}

bool StackAgent::ReadReport() {
  const auto type = CurrentReportType();
  if (m_inTransfer || !type || *type == core::device::ReportType::Output) return false;
  if (*type == core::device::ReportType::Feature)
    return Interface().ReadFeature(static_cast<std::size_t>(m_current.report));
  return WaitForInput();
}

TransferOutcome StackAgent::Move(const Transfer& transfer, std::int32_t timeOut, const std::function<bool()>& between) {
  TransferOutcome outcome = TransferOutcome::Failed;
  {
    const core::base::RaisedFlag inTransfer(m_inTransfer);
    const auto report = static_cast<std::size_t>(m_current.report);
    outcome = transfer(Interface(), report, {std::chrono::milliseconds(timeOut), m_clock, between});
  }
  StopIfWanted();
  return outcome;
}

bool StackAgent::GiveTurn() {
  const Selection selected = m_current;
  core::base::Pump(m_pump);
  m_current = selected;
  return !m_stopWanted;
}

bool StackAgent::WaitForOutput() {
  constexpr std::chrono::milliseconds kLittle{kHurriedWriteTimeOut};
  std::optional<core::base::Clock::Duration> end;
  if (m_hurry) end = m_clock.Now() + kLittle;
  const TransferOutcome outcome = Move(&HidInterface::WriteOutput, kWriteTimeOut, [&] {
    // Whoever is in a hurry is on the way out: then nobody else has anything to do any more.
    if (end) return m_clock.Now() < *end;
    const bool goesOn = GiveTurn();
    if (m_hurry) end = m_clock.Now() + kLittle;
    return goesOn;
  });
  return outcome == TransferOutcome::Done;
}

bool StackAgent::WaitForInput() {
  const std::int32_t handle = Interface().Handle();
  const std::int32_t report = m_current.report;
  const TransferOutcome outcome = Move(&HidInterface::ReadInput, kTimeOut, [this] { return GiveTurn(); });
  if (m_events != nullptr && outcome == TransferOutcome::Done) m_events->ReportArrived(handle, report);
  if (m_events != nullptr && outcome == TransferOutcome::TimedOut) m_events->ReportTimedOut(handle, report);
  return outcome == TransferOutcome::Done;
}

}  // namespace kestrin::platform::hid
