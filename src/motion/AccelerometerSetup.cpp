#include "motion/AccelerometerSetup.h"

#include <utility>

namespace kestrin::motion {

AccelerometerSetup::AccelerometerSetup(device::TLS& board, std::string serialNumber, KeptParameters& kept)
    : m_board(board), m_serialNumber(std::move(serialNumber)), m_kept(kept) {}

std::optional<device::AccParam> AccelerometerSetup::Read() {
  device::AccParam parameters;
  if (!m_board.GetAccParam(parameters)) return std::nullopt;
  return parameters;
}

std::optional<device::AccParam> AccelerometerSetup::Change(
    const std::map<const DetectionParameter*, std::int32_t>& values) {
  std::optional<device::AccParam> wanted = values.size() == kDetectionParameters.size() ? device::AccParam{} : Read();
  if (!wanted) return std::nullopt;
  std::optional<device::AccParam> remembered = Kept();
  for (const auto& [parameter, value] : values) {
    SetShownValue(*parameter, *wanted, value);
    if (remembered) SetShownValue(*parameter, *remembered, value);
  }
  const auto held = Send(*wanted);
  if (!held || !remembered) return held;
  if (*remembered == *wanted)
    m_kept.Forget(m_serialNumber);
  else
    // A disk that refuses leaves the older values remembered, which is still better than none.
    static_cast<void>(m_kept.Keep(m_serialNumber, *remembered));
  return held;
}

std::optional<device::AccParam> AccelerometerSetup::RestoreDefaults() {
  std::map<const DetectionParameter*, std::int32_t> values;
  for (const DetectionParameter& parameter : kDetectionParameters) values[&parameter] = parameter.factoryDefault;
  return Change(values);
}

std::optional<device::AccParam> AccelerometerSetup::Kept() const { return m_kept.Find(m_serialNumber); }

std::optional<device::AccParam> AccelerometerSetup::RestoreKept() {
  const auto kept = Kept();
  if (!kept) return std::nullopt;
  const auto held = Send(*kept);
  if (held) m_kept.Forget(m_serialNumber);
  return held;
}

std::optional<device::AccParam> AccelerometerSetup::Send(const device::AccParam& parameters) {
  if (!m_board.SetAccParam(parameters)) return std::nullopt;
  // The board takes new values into use when it restarts.
  static_cast<void>(m_board.Reset());
  return Read();
}

}  // namespace kestrin::motion
