// SPDX-License-Identifier: MIT
#pragma once

#include <any>
#include <cstdint>
#include <string>

#include "device/THIDagent.h"

namespace kestrin::core::device {

/// One report field of a HID device, bound through the agent.
class TOneHidVar {
 public:
  /// Stores what identifies the field; the variable is unbound.
  void DoCreate(ReportType RptType, std::int32_t UsagePage, std::int32_t Usage, std::int32_t VarIdentity,
                std::string VarName);

  /// Looks the field up in the agent's current interface and copies what the agent knows of it. True when it was found;
  /// an AgentError on the way counts as not found.
  [[nodiscard]] bool Bind(THIDagent& agent);
  /// Forgets the field: VarIndex and RptIndex become -1, HidHandle 0, VarIdentity and the object id new ones.
  void UnBind();
  /// Makes the interface that the variable was found on the agent's current one: the numbers of variables and reports
  /// count within an interface. Throws AgentError when it is not open any more.
  void SelectInterface() const;

  /// True exactly when VarIndex is not negative.
  [[nodiscard]] bool IsBound() const { return m_varIndex >= 0; }

  /// Returns the type of HID Report (0 = Input, 1 = Output, 2 = Feature) that contains this var
  [[nodiscard]] ReportType RptType() const { return m_rptType; }
  [[nodiscard]] std::int32_t UsagePage() const { return m_usagePage; }
  [[nodiscard]] std::int32_t Usage() const { return m_usage; }
  /// The agent's number of the variable; -1 while unbound.
  [[nodiscard]] std::int32_t VarIndex() const { return m_varIndex; }
  /// The agent's number of the report that holds the variable; -1 while unbound.
  [[nodiscard]] std::int32_t RptIndex() const { return m_rptIndex; }
  /// Handle of the interface the variable was found on; 0 while unbound.
  [[nodiscard]] std::int32_t HidHandle() const { return m_hidHandle; }
  /// Tells which owner the variable belongs to; a new one after each UnBind().
  [[nodiscard]] std::int32_t VarIdentity() const { return m_varIdentity; }

  // --- The rest of a variable's documented interface: only tests call it ---

  /// Transfers the whole report that holds this variable: an input report is read, an output report written, a feature
  /// report read or written as `read` says. False when unbound or when the transfer failed.
  [[nodiscard]] bool update(bool read);
  [[nodiscard]] const std::string& VarName() const { return m_varName; }
  /// What the report descriptor said when the variable was bound.
  [[nodiscard]] const VariableAttributes& Attributes() const { return m_attributes; }
  /// Unique within the process; a new one after each UnBind().
  [[nodiscard]] std::int32_t ClassDebugID() const { return m_objectId; }

  [[nodiscard]] std::int32_t ScaleMode() const { return m_scaleMode; }
  void SetScaleMode(std::int32_t mode) { m_scaleMode = mode; }
  /// Free for the user.
  [[nodiscard]] const std::any& Tag() const { return m_tag; }
  void SetTag(std::any value) { m_tag = std::move(value); }

  /// The first element's value, scaled from the logical to the physical range. 0 when unbound or unreadable.
  [[nodiscard]] std::int32_t ScaledValue() const;
  /// Does nothing when unbound.
  void SetScaledValue(std::int32_t value);
  /// The first element's value as it is in the report. 0 when unbound or unreadable.
  [[nodiscard]] std::int32_t UnScaledValue() const;
  /// Does nothing when unbound.
  void SetUnScaledValue(std::int32_t value);
  /// Always false: the boards have no single-bit variable.
  [[nodiscard]] bool BoolValue() const { return false; }
  /// Does nothing.
  void SetBoolValue(bool) {}

 private:
  [[nodiscard]] std::int32_t Get(std::int32_t (THIDagent::*value)() const) const;
  void Set(void (THIDagent::*set)(std::int32_t), std::int32_t value);

  std::string m_varName;
  ReportType m_rptType = ReportType::Input;
  std::int32_t m_usagePage = 0;
  std::int32_t m_usage = 0;
  std::int32_t m_scaleMode = 0;
  std::any m_tag;
  std::int32_t m_varIndex = -1;
  std::int32_t m_rptIndex = -1;
  std::int32_t m_hidHandle = 0;
  std::int32_t m_varIdentity = 0;
  std::int32_t m_objectId = 0;
  VariableAttributes m_attributes;
  THIDagent* m_agent = nullptr;
};

}  // namespace kestrin::core::device
