// SPDX-License-Identifier: MIT
#include "simulator/FaultPlan.h"

#include <algorithm>

namespace kestrin::simulator {

bool FaultPlan::Has(Fault::Kind kind, std::uint64_t number) const {
  return std::find(m_faults.begin(), m_faults.end(), Fault{kind, number}) != m_faults.end();
}

FaultPlan::Verdict FaultPlan::NextWrite() {
  ++m_written;
  return {Has(Fault::Kind::Unplug, m_written + m_read), Has(Fault::Kind::WriteFails, m_written),
          Has(Fault::Kind::FlipBit, m_written)};
}

FaultPlan::Verdict FaultPlan::NextRead() {
  ++m_read;
  return {Has(Fault::Kind::Unplug, m_written + m_read), Has(Fault::Kind::ReadFails, m_read), false};
}

}  // namespace kestrin::simulator
