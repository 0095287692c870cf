// SPDX-License-Identifier: MIT
#include "device/TLS.h"

#include <algorithm>

#include "device/ObjectId.h"

namespace kestrin::core::device {

namespace {

/// The `VarIdentity` of both variables.
constexpr std::int32_t kIdentity = 1;

bool IsBoard(const THIDagent& agent) {
  try {
    return agent.VendorId() == kBoardVendorId && agent.ProductId() == kBoardProductId;
  } catch (const AgentError&) {
    return false;
  }
}

}  // namespace

TLS::TLS() : m_objectId(0) {
  // The apostrophes are part of the names under which the agent lists the variables.
  m_variables[kCommand].DoCreate(ReportType::Output, kVendorDefinedPage, kCommandUsage, kIdentity, "LS_Command'");
  m_variables[kResponse].DoCreate(ReportType::Input, kVendorDefinedPage, kResponseUsage, kIdentity, "LS_Response'");
  m_objectId = NextObjectId();
}

int TLS::BindVars(THIDagent& agent) {
  m_agent = &agent;
  m_bound = true;
  try {
    agent.SelectInterface(agent.NumberOfInterfaces() - 1);
  } catch (const AgentError&) {
    return -1;
  }
  return IsBoard(agent) ? BindUnbound() : -1;
}

int TLS::ReBind(THIDagent& agent) {
  m_agent = &agent;
  for (TOneHidVar& variable : m_variables) {
    UnBindRpt(variable);
    variable.UnBind();
  }
  const int unbound = BindUnbound();
  BindEvents();
  return unbound;
}

int TLS::BindUnbound() {
  int unbound = static_cast<int>(m_variables.size());
  for (TOneHidVar& variable : m_variables) {
    const bool fresh = !variable.IsBound();
    if (fresh && !variable.Bind(*m_agent)) continue;
    --unbound;
    if (fresh && m_deviceIdentity == 0) m_deviceIdentity = variable.VarIdentity();
  }
  for (const TOneHidVar& variable : m_variables) {
    if (variable.UsagePage() != kVendorDefinedPage) continue;
    if (variable.Usage() == kCommandUsage && variable.RptType() == ReportType::Output)
      m_commandVariable = variable.VarIndex();
    else if (variable.Usage() == kResponseUsage && variable.RptType() == ReportType::Input)
      m_responseVariable = variable.VarIndex();
    else
      continue;
    if (m_deviceIdentity == 0) m_deviceIdentity = variable.VarIdentity();
  }
  RefreshReportIndices();
  return unbound;
}

void TLS::RefreshReportIndices() {
  if (m_variables[kCommand].RptIndex() >= 0) m_outputReport = m_variables[kCommand].RptIndex();
  if (m_variables[kResponse].RptIndex() >= 0) m_inputReport = m_variables[kResponse].RptIndex();
}

bool TLS::HasHandle(std::int32_t handle) const {
  return std::any_of(m_variables.begin(), m_variables.end(),
                     [&](const TOneHidVar& variable) { return variable.HidHandle() == handle; });
}

void TLS::HidClosed(std::int32_t handle) {
  for (TOneHidVar& variable : m_variables) {
    if (variable.HidHandle() != handle) continue;
    UnBindRpt(variable);
    variable.UnBind();
  }
}

void TLS::UnBindRpt(const TOneHidVar& variable) {
  if (variable.RptType() == ReportType::Output && variable.RptIndex() == m_outputReport) m_outputReport = -1;
  if (variable.RptType() == ReportType::Input && variable.RptIndex() == m_inputReport) m_inputReport = -1;
}

int TLS::UnboundVarCount() const {
  return static_cast<int>(std::count_if(m_variables.begin(), m_variables.end(), [&](const TOneHidVar& variable) {
    return !variable.IsBound() && variable.VarIdentity() == m_deviceIdentity;
  }));
}

int TLS::VariableCount() const {
  return static_cast<int>(std::count_if(m_variables.begin(), m_variables.end(), [&](const TOneHidVar& variable) {
    return variable.VarIdentity() == m_deviceIdentity;
  }));
}

bool TLS::WriteOutputRptA() {
  m_answered = false;
  m_written = false;
  m_refused = true;
  if (m_outputReport < 0) return false;
  try {
    m_variables[kCommand].SelectInterface();
    m_agent->SelectVariable(m_commandVariable);
    m_agent->SetElements(m_command);
    m_agent->SetCurrentRptNum(m_outputReport);
    m_written = m_agent->WriteReport();
    m_refused = !m_written;
    return m_written;
  } catch (const AgentError&) {
    return false;
  }
}

bool TLS::ReadInputRptB() {
  m_answered = false;
  if (m_inputReport < 0) return false;
  try {
    m_variables[kResponse].SelectInterface();
    m_agent->SetCurrentRptNum(m_inputReport);
    const bool read = m_agent->ReadReport();
    m_agent->SelectVariable(m_responseVariable);
    m_agent->GetElements(m_response);
    m_answered = read;
    return read;
  } catch (const AgentError&) {
    return false;
  }
}

std::uint8_t TLS::Get_LS_Command(int index) const { return m_command.at(static_cast<std::size_t>(index)); }

void TLS::Set_LS_Command(int index, std::uint8_t value) { m_command.at(static_cast<std::size_t>(index)) = value; }

std::uint8_t TLS::Get_LS_Response(int index) const { return m_response.at(static_cast<std::size_t>(index)); }

void TLS::Set_LS_Response(int index, std::uint8_t value) { m_response.at(static_cast<std::size_t>(index)) = value; }

}  // namespace kestrin::core::device
