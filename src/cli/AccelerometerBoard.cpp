#include "cli/AccelerometerBoard.h"

#include "cli/CommandFailure.h"
#include "cli/TextTable.h"
#include "motion/DetectionParameter.h"

namespace kestrin::cli {

namespace {

device::TLS& RequireSensor(OnlineBoard& online) {
  online.RequireSoundBoard();
  return online.Board();
}

}  // namespace

AccelerometerBoard::AccelerometerBoard(Context& context)
    : m_kept(OpenKeptParameters(context.disk)),
      m_online(context),
      m_setup(RequireSensor(m_online), m_online.Session().SerialNumber(), m_online.Session().DeviceRevision(), m_kept) {
}

Report AccelerometerBoard::ReportOf(const std::optional<device::AccParam>& parameters, const std::string& failure) {
  if (!parameters) throw CommandFailure(ExitCode::Failed, failure);
  Report report;
  TextTable table({{"parameter"}, {"value", TextTable::Align::Right}, {""}});
  for (const motion::DetectionParameter& parameter : motion::kDetectionParameters) {
    const std::int32_t value = motion::ShownValue(parameter, *parameters);
    report.document[std::string(parameter.name)] = value;
    table.Add({std::string(parameter.name), std::to_string(value),
               std::string(parameter.caption) + " (" + std::string(parameter.group) + ")"});
  }
  report.text = table.Text();
  return report;
}

}  // namespace kestrin::cli
