// SPDX-License-Identifier: MIT
#include "platform/hid/ReportDescriptor.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/hid/DescriptorReader.h"

namespace kestrin::platform::hid {

core::base::Result<ReportDescriptor> ReportDescriptor::Read(std::span<const std::uint8_t> bytes) {
  ReportDescriptor descriptor;
  if (std::string error = DescriptorReader(descriptor).Read(bytes); !error.empty())
    return core::base::Failure{core::base::FailureKind::NotValid, std::move(error)};
  return descriptor;
}

bool ReportDescriptor::UsesReportIds() const {
  return std::any_of(m_reports.begin(), m_reports.end(), [](const DescriptorReport& report) { return report.id != 0; });
}

std::size_t ReportDescriptor::LongestReport(core::device::ReportType type) const {
  std::size_t longest = 0;
  for (const DescriptorReport& report : m_reports) {
    if (report.type == type) longest = std::max(longest, report.Bytes());
  }
  return longest;
}

std::int32_t ReportDescriptor::Find(core::device::ReportType type, std::int32_t usage, std::int32_t usagePage) const {
  const auto found = std::find_if(m_variables.begin(), m_variables.end(), [&](const DescriptorVariable& variable) {
    return m_reports[variable.report].type == type && variable.usagePage == usagePage &&
           variable.usageMinimum <= usage && usage <= variable.usageMaximum;
  });
  return found == m_variables.end() ? -1 : static_cast<std::int32_t>(found - m_variables.begin());
}

}  // namespace kestrin::platform::hid
