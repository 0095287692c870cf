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
  if (!m_board.SetAccParam(*wanted)) return std::nullopt;
  if (remembered == wanted)
    m_kept.Forget(m_serialNumber);
  else if (remembered)
    // A disk that refuses leaves the older values remembered, which is still better than none.
    static_cast<void>(m_kept.Keep(m_serialNumber, *remembered));
  return Restart(*wanted);
}

std::optional<device::AccParam> AccelerometerSetup::RestoreDefaults() { return Replace(FactoryDefaults()); }

std::optional<device::AccParam> AccelerometerSetup::Kept() const { return m_kept.Find(m_serialNumber); }

std::optional<device::AccParam> AccelerometerSetup::RestoreKept() {
  const auto kept = Kept();
  return kept ? Replace(*kept) : std::nullopt;
}

std::optional<device::AccParam> AccelerometerSetup::Replace(const device::AccParam& parameters) {
  if (!m_board.SetAccParam(parameters)) return std::nullopt;
  m_kept.Forget(m_serialNumber);
  return Restart(parameters);
}

device::AccParam AccelerometerSetup::Restart(const device::AccParam& accepted) {
  // The board takes new values into use when it restarts.
  static_cast<void>(m_board.Reset());
  return Read().value_or(accepted);
}

}  // namespace kestrin::motion
