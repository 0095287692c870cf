// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/base/Clock.h"
#include "core/base/EventPump.h"
#include "core/device/THIDagent.h"
#include "platform/hid/DeviceMonitor.h"
#include "platform/hid/HidInterface.h"
#include "platform/hid/HidStack.h"

namespace kestrin::platform::hid {

/// THIDagent over a HID stack.
///
/// A search asks for the ids of the match alone; a match that does not set both ids finds nothing, because asking every
/// HID device for its names stalls mice and keyboards on some systems.
///
/// While a read or a write waits, the event pump gets its turn at least every 20 ms, and handlers that it runs may call
/// the agent: a second transfer is refused (false), a search opens nothing, Refresh() leaves notices for later, Stop()
/// ends the wait as failed and takes effect behind it. What they select is forgotten when the wait goes on. A write
/// that is waited for no longer goes on by itself; until the device has ended it, all others are refused.
/// Coming and going is reported from Refresh() alone, which also looks whether a board that was refused, because
/// another program used it or this person was not permitted to, would be so still;
/// ReportArrived() and ReportTimedOut() at the end of a read.
class StackAgent final : public core::device::THIDagent {
 public:
  /// Makes what notices devices; called by Start().
  using MonitorFactory = std::function<std::unique_ptr<DeviceMonitor>()>;

  /// With `onlyPath` the agent sees no board but the one there. `clock` must outlive the agent.
  StackAgent(std::unique_ptr<HidStack> stack, MonitorFactory makeMonitor, const core::base::Clock& clock,
             core::base::EventPump pump, std::string onlyPath = "");
  ~StackAgent() override;
  StackAgent(const StackAgent&) = delete;
  StackAgent& operator=(const StackAgent&) = delete;

  void SetEvents(core::device::HidAgentEvents* events) override { m_events = events; }
  void Start() override;
  void Stop() override;
  void Hurry() override { m_hurry = true; }
  void SetMatch(const core::device::HidMatch& match) override { m_match = match; }
  [[nodiscard]] bool SearchAndOpen() override;
  void Refresh() override;
  [[nodiscard]] std::string AccessProblem() const override;

  [[nodiscard]] std::int32_t NumberOfInterfaces() const override;
  void SelectInterface(std::int32_t number) override;
  [[nodiscard]] std::int32_t VendorId() const override { return Interface().Node().vendorId; }
  [[nodiscard]] std::int32_t ProductId() const override { return Interface().Node().productId; }
  [[nodiscard]] std::int32_t InterfaceHandle() const override { return Interface().Handle(); }

  [[nodiscard]] std::int32_t FindVariable(core::device::ReportType type, std::int32_t usage,
                                          std::int32_t usagePage) const override;
  void SelectVariable(std::int32_t number) override;
  [[nodiscard]] std::int32_t VariableReportNumber() const override;
  [[nodiscard]] core::device::VariableAttributes Attributes() const override;
  /// HID devices have no place for a name or an option; both only insist on a current variable.
  void SetVariableName(const std::string& name) override;
  void SetVariableOption(std::int32_t option) override;
  [[nodiscard]] std::int32_t ScaledValue() const override;
  void SetScaledValue(std::int32_t value) override;
  [[nodiscard]] std::int32_t UnScaledValue() const override;
  void SetUnScaledValue(std::int32_t value) override;
  void SetElements(std::span<const std::uint8_t> values) override;
  void GetElements(std::span<std::uint8_t> values) const override;

  void SetCurrentRptNum(std::int32_t number) override { m_current.report = number; }
  [[nodiscard]] bool WriteReport() override;
  [[nodiscard]] bool ReadReport() override;

 private:
  /// What is current; -1 for none.
  struct Selection {
    std::int32_t interfaceNumber = -1;
    std::int32_t variable = -1;
    std::int32_t report = -1;
  };
  /// An interface that the last search could not open, and why.
  struct Refusal {
    HidNode node;
    core::base::Failure why;
    /// What a look at it says as long as nothing has changed; empty for "can be opened".
    std::optional<core::base::FailureKind> look;
  };
  struct PendingEvent {
    enum class Kind { Closed, Removed, Arrived };
    Kind kind = Kind::Closed;
    std::int32_t handle = 0;
    std::string path;
  };

  [[nodiscard]] HidInterface& Interface() const;
  /// The current variable's number.
  [[nodiscard]] std::size_t Variable() const;
  /// The type of the current report, if there is one.
  [[nodiscard]] std::optional<core::device::ReportType> CurrentReportType() const;
  [[nodiscard]] bool IsOpen(const std::string& path) const;
  [[nodiscard]] bool IsWanted(const std::string& path) const { return m_onlyPath.empty() || path == m_onlyPath; }
  void OpenMatching();
  /// Opens one interface and tells.
  core::base::Result<> Open(const HidNode& node);
  using Transfer = std::function<TransferOutcome(HidInterface&, std::size_t report, const HidInterface::Wait&)>;

  /// Has the current report moved; `between` as HidInterface has it.
  [[nodiscard]] TransferOutcome Move(const Transfer& transfer, std::int32_t timeOut,
                                     const std::function<bool()>& between);
  /// The pump's turn in a transfer. False when that is to end.
  [[nodiscard]] bool GiveTurn();
  [[nodiscard]] bool WaitForOutput();
  [[nodiscard]] bool WaitForInput();
  void CollectNotices();
  [[nodiscard]] std::optional<core::base::FailureKind> LookAt(const HidNode& node);
  /// Remembers why an interface could not be opened; one that is gone is no board any more.
  void Refuse(const HidNode& node, const core::base::Failure& why);
  /// Interfaces that would not be refused any more, or not in the same way, count as arrived; those that are gone are
  /// forgotten.
  void CollectChanged();
  void Deliver(const PendingEvent& event);
  /// Takes an interface out of the list and moves the selection with it. False when it is not in the list.
  bool Close(std::int32_t handle);
  /// A stop takes effect once nobody is in the middle of a transfer or a search.
  void StopIfWanted();
  void CloseAll();

  std::unique_ptr<HidStack> m_stack;
  MonitorFactory m_makeMonitor;
  const core::base::Clock& m_clock;
  core::base::EventPump m_pump;
  std::string m_onlyPath;

  core::device::HidAgentEvents* m_events = nullptr;
  core::device::HidMatch m_match;
  std::unique_ptr<DeviceMonitor> m_monitor;
  std::vector<std::unique_ptr<HidInterface>> m_interfaces;
  std::deque<PendingEvent> m_pending;
  Selection m_current;
  std::int32_t m_lastHandle = 0;
  std::vector<Refusal> m_refused;
  bool m_inTransfer = false;
  bool m_searching = false;
  bool m_delivering = false;
  bool m_stopWanted = false;
  bool m_hurry = false;
};

}  // namespace kestrin::platform::hid
