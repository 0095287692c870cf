// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>

namespace kestrin::core::device {

/// What an agent's AccessProblem() says of a board that another program uses.
inline constexpr const char* kBoardInUse = "Another program is using this board. Close it and try again.";

/// The type of a HID report.
enum class ReportType : std::int16_t { Input = 0, Output = 1, Feature = 2 };

/// Raised by an agent when it is asked for something that it does not have: no current interface or variable, a number
/// outside its range. Callers that bind and poll swallow it.
class AgentError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Which interfaces a search opens. A filter counts only while its flag is set; with all flags off everything matches.
struct HidMatch {
  std::int32_t VID_To_Match = 0;
  std::int32_t PID_To_Match = 0;
  bool SearchOnVID = false;
  bool SearchOnPID = false;
};

/// What a report descriptor says about one field.
struct VariableAttributes {
  bool IsButton = false;
  bool Volatile = false;
  bool NoWrap = false;
  bool NoPrefState = false;
  bool Linear = false;
  bool HasNullState = false;
  bool BitsNotBuffer = false;
  bool ArrayNotVariable = false;
  bool AbsoluteNotRelative = false;
  std::int32_t PhysicalMinimum = 0;
  std::int32_t PhysicalMaximum = 0;
  std::int32_t LogicalMinimum = 0;
  std::int32_t LogicalMaximum = 0;
  /// Bits of one element of the field.
  std::int32_t SizeInBits = 0;
  std::string StringDescriptor;
};

/// Receives what an agent notices. Called on the thread that owns the agent, never in the middle of a report transfer
/// that another handler waits for.
class HidAgentEvents {
 public:
  virtual ~HidAgentEvents() = default;
  /// A matching interface was opened during a search; it is the agent's last interface. `reportLengthIn` and
  /// `reportLengthOut` are the bytes of its longest input and output report without report id.
  virtual void InterfaceOpened(std::int32_t handle, std::int32_t reportLengthIn, std::int32_t reportLengthOut,
                               const std::string& path) = 0;
  /// An interface was closed; the interfaces behind it have moved up by one.
  virtual void InterfaceClosed(std::int32_t handle, const std::string& path) = 0;
  /// A board was unplugged. Comes after InterfaceClosed() of its interfaces.
  virtual void DeviceRemoved(std::int32_t handle, const std::string& path) = 0;
  /// A board was plugged in, or another program let go of it; nothing has been opened yet.
  virtual void DeviceArrival(const std::string& path) = 0;
  /// An input report was read.
  virtual void ReportArrived(std::int32_t handle, std::int32_t reportNumber) = 0;
  /// A report read waited its whole time in vain.
  virtual void ReportTimedOut(std::int32_t handle, std::int32_t reportNumber) = 0;
};

/// The port to the HID stack: opens the matching interfaces, turns the fields of their report descriptors into numbered
/// variables, moves whole reports.
///
/// Numbering: interfaces from 0 in the order in which they were opened; variables and reports from 0 within the agent's
/// current interface. A "report number" is an index into that interface's reports, not the report id on the wire.
///
/// State: one current interface, in it one current variable and one current report number; each report has a value
/// buffer that element access and transfers share.
class THIDagent {
 public:
  /// A report read waits at most this long, in milliseconds.
  static constexpr std::int32_t kTimeOut = 3000;
  /// And a report write this long, in milliseconds. A board that takes nothing is given up a little earlier by most
  /// systems themselves.
  static constexpr std::int32_t kWriteTimeOut = 6000;
  /// A report write of somebody in a hurry. A board that is well takes a report in 17 ms; on a computer that is busy it
  /// takes longer to hear of it, and until then the next program finds the board in use.
  static constexpr std::int32_t kHurriedWriteTimeOut = 100;

  virtual ~THIDagent() = default;

  /// Who hears of events; nullptr for nobody. Must outlive the agent or be taken out before.
  virtual void SetEvents(HidAgentEvents* events) = 0;
  /// Starts the agent: from now on it watches for devices that match.
  virtual void Start() = 0;
  /// Closes every interface without raising events and stops watching.
  virtual void Stop() = 0;
  /// The program is about to end, or means to: from now on, until the next Start(), no report write is waited for
  /// longer than kHurriedWriteTimeOut. What the board does not take in that time it may still take behind the program's
  /// back.
  virtual void Hurry() = 0;
  virtual void SetMatch(const HidMatch& match) = 0;
  /// Opens every matching interface that is not open yet, raising InterfaceOpened for each. One that is open belongs
  /// to this program alone: no other that asks for it the same way gets it. True when at least one interface is open
  /// afterwards.
  [[nodiscard]] virtual bool SearchAndOpen() = 0;
  /// Looks at what the HID stack has noticed since the last call and raises the events for it. Cheap; for timers.
  virtual void Refresh() = 0;
  /// Why the last search could not open an interface that is there: its text says how to permit it, or is kBoardInUse;
  /// "" otherwise.
  [[nodiscard]] virtual std::string AccessProblem() const = 0;

  [[nodiscard]] virtual std::int32_t NumberOfInterfaces() const = 0;
  /// Makes interface `number` current. Throws AgentError when there is none of that number.
  virtual void SelectInterface(std::int32_t number) = 0;
  /// Of the current interface; throw AgentError when there is none.
  [[nodiscard]] virtual std::int32_t VendorId() const = 0;
  [[nodiscard]] virtual std::int32_t ProductId() const = 0;
  [[nodiscard]] virtual std::int32_t InterfaceHandle() const = 0;

  /// The number of the current interface's first variable with that report type, usage and usage page; -1 when there is
  /// none. Throws AgentError without a current interface.
  [[nodiscard]] virtual std::int32_t FindVariable(ReportType type, std::int32_t usage,
                                                  std::int32_t usagePage) const = 0;
  /// Makes variable `number` current. Throws AgentError when there is none of that number.
  virtual void SelectVariable(std::int32_t number) = 0;
  /// Of the current variable; throw AgentError when there is none.
  [[nodiscard]] virtual std::int32_t VariableReportNumber() const = 0;
  [[nodiscard]] virtual VariableAttributes Attributes() const = 0;
  virtual void SetVariableName(const std::string& name) = 0;
  virtual void SetVariableOption(std::int32_t option) = 0;
  [[nodiscard]] virtual std::int32_t ScaledValue() const = 0;
  virtual void SetScaledValue(std::int32_t value) = 0;
  [[nodiscard]] virtual std::int32_t UnScaledValue() const = 0;
  virtual void SetUnScaledValue(std::int32_t value) = 0;

  /// Sets elements 0 .. values.size() - 1 of the current variable, one byte each. Elements beyond the field are left
  /// out.
  virtual void SetElements(std::span<const std::uint8_t> values) = 0;
  /// Copies elements 0 .. values.size() - 1 of the current variable; elements that the field does not have read 0.
  virtual void GetElements(std::span<std::uint8_t> values) const = 0;

  /// Which report the transfers below move.
  virtual void SetCurrentRptNum(std::int32_t number) = 0;
  /// Writes the current output report (or feature report), waiting at most kWriteTimeOut. False when the device did not
  /// take it whole in that time. Answers that came too late for an earlier command are thrown away before.
  [[nodiscard]] virtual bool WriteReport() = 0;
  /// Reads the next input report into the current report's value, waiting at most kTimeOut. False when none came or its
  /// length was wrong; the value then stays as it was. For a feature report: asks the device for it.
  [[nodiscard]] virtual bool ReadReport() = 0;
};

}  // namespace kestrin::core::device
