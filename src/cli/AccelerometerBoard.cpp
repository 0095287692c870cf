// SPDX-License-Identifier: MIT
#include "cli/AccelerometerBoard.h"

#include "cli/CommandFailure.h"
#include "cli/TextTable.h"
#include "core/motion/DetectionParameter.h"

namespace kestrin::cli {

namespace {

core::device::TLS& RequireSensor(OnlineBoard& online) {
  online.RequireSoundBoard();
  // What is kept is kept by serial number. Without one the values can be read all the same.
  static_cast<void>(online.EnsureIdentified());
  return online.Board();
}

}  // namespace

AccelerometerBoard::AccelerometerBoard(Context& context)
    : m_kept(OpenKeptParameters(context.disk)),
      m_online(context),
      // The braces keep the order: the serial number may be told only now.
      m_setup{RequireSensor(m_online), m_online.State().serialNumber, m_online.State().deviceRevision, m_kept} {}

core::motion::AccelerometerSetup& AccelerometerBoard::SetupToChange() {
  m_online.RequireIdentified();
  return m_setup;
}

void AccelerometerBoard::RequireFlashPeriod() const {
  if (!core::motion::HasFlashPeriod(m_online.State().deviceRevision))
    throw CommandFailure(ExitCode::Failed,
                         "This board has no adjustable flash period, so nothing was changed. Leave out --FOCTime to "
                         "set the other parameters.");
}

Report AccelerometerBoard::ReportOf(const std::optional<core::device::AccParam>& parameters,
                                    const std::string& failure) {
  if (!parameters) throw CommandFailure(ExitCode::Failed, failure);
  Report report;
  TextTable table({{"parameter"}, {"value", TextTable::Align::Right}, {""}});
  for (const core::motion::DetectionParameter& parameter : core::motion::kDetectionParameters) {
    const std::int32_t value = core::motion::ShownValue(parameter, *parameters);
    report.document[std::string(parameter.name)] = value;
    table.Add({std::string(parameter.name), std::to_string(value),
               std::string(parameter.caption) + " (" + std::string(parameter.group) + ")"});
  }
  report.text = table.Text();
  return report;
}

}  // namespace kestrin::cli
