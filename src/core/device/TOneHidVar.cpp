// SPDX-License-Identifier: MIT
#include "device/TOneHidVar.h"

#include <utility>

#include "device/ObjectId.h"

namespace kestrin::core::device {

void TOneHidVar::DoCreate(ReportType RptType, std::int32_t UsagePage, std::int32_t Usage, std::int32_t VarIdentity,
                          std::string VarName) {
  m_rptType = RptType;
  m_usagePage = UsagePage;
  m_usage = Usage;
  m_varIdentity = VarIdentity;
  m_varName = std::move(VarName);
  m_objectId = NextObjectId();
}

bool TOneHidVar::Bind(THIDagent& agent) {
  m_agent = &agent;
  try {
    const std::int32_t found = agent.FindVariable(m_rptType, m_usage, m_usagePage);
    if (found < 0) return false;
    agent.SelectVariable(found);
    const std::int32_t handle = agent.InterfaceHandle();
    const std::int32_t report = agent.VariableReportNumber();
    m_attributes = agent.Attributes();
    agent.SetVariableName(m_varName);
    agent.SetVariableOption(1);
    // Bound only now: an error on the way leaves the variable unbound.
    m_varIndex = found;
    m_hidHandle = handle;
    m_rptIndex = report;
    return true;
  } catch (const AgentError&) {
    return false;
  }
}

void TOneHidVar::UnBind() {
  m_varIndex = -1;
  m_rptIndex = -1;
  m_hidHandle = 0;
  // A new identity takes the variable out of its board's counts until the board binds it again.
  m_objectId = NextObjectId();
  m_varIdentity = m_objectId;
}

void TOneHidVar::SelectInterface() const {
  // Interfaces are renumbered when one is closed; the handle stays.
  for (std::int32_t number = 0; number < m_agent->NumberOfInterfaces(); ++number) {
    m_agent->SelectInterface(number);
    if (m_agent->InterfaceHandle() == m_hidHandle) return;
  }
  throw AgentError("the variable's interface is closed");
}

bool TOneHidVar::update(bool read) {
  if (m_rptIndex < 0) return false;
  try {
    SelectInterface();
    m_agent->SetCurrentRptNum(m_rptIndex);
    const bool reads = m_rptType == ReportType::Input || (m_rptType == ReportType::Feature && read);
    return reads ? m_agent->ReadReport() : m_agent->WriteReport();
  } catch (const AgentError&) {
    return false;
  }
}

std::int32_t TOneHidVar::ScaledValue() const { return Get(&THIDagent::ScaledValue); }

void TOneHidVar::SetScaledValue(std::int32_t value) { Set(&THIDagent::SetScaledValue, value); }

std::int32_t TOneHidVar::UnScaledValue() const { return Get(&THIDagent::UnScaledValue); }

void TOneHidVar::SetUnScaledValue(std::int32_t value) { Set(&THIDagent::SetUnScaledValue, value); }

std::int32_t TOneHidVar::Get(std::int32_t (THIDagent::*value)() const) const {
  if (!IsBound()) return 0;
  try {
    SelectInterface();
    m_agent->SelectVariable(m_varIndex);
    return (m_agent->*value)();
  } catch (const AgentError&) {
    return 0;
  }
}

void TOneHidVar::Set(void (THIDagent::*set)(std::int32_t), std::int32_t value) {
  if (!IsBound()) return;
  try {
    SelectInterface();
    m_agent->SelectVariable(m_varIndex);
    (m_agent->*set)(value);
  } catch (const AgentError&) {
    // A variable that went away has nothing to set.
  }
}

}  // namespace kestrin::core::device
