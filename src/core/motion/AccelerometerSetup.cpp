// SPDX-License-Identifier: MIT
#include "motion/AccelerometerSetup.h"

#include <utility>

namespace kestrin::core::motion {

AccelerometerSetup::AccelerometerSetup(device::TLS& board, std::string serialNumber, std::uint16_t revision,
                                       device::KeptParameters& kept)
    : m_board(board), m_serialNumber(std::move(serialNumber)), m_revision(revision), m_kept(kept) {}

std::optional<device::AccParam> AccelerometerSetup::Read() {
  device::AccParam parameters;
  if (!m_board.GetAccParam(parameters)) return std::nullopt;
  return parameters;
}

AccelerometerSetup::Sent AccelerometerSetup::Send(const device::AccParam& wanted) { return Deliver(wanted, wanted); }

std::optional<device::AccParam> AccelerometerSetup::ReadBack(const device::AccParam& accepted) {
  const auto held = Read();
  if (held && IsFormOf(*held, accepted, m_revision)) Settle(*held, accepted);
  return held;
}

std::optional<device::AccParam> AccelerometerSetup::Change(
    const std::map<const DetectionParameter*, std::int32_t>& values) {
  std::optional<device::AccParam> wanted = values.size() == kDetectionParameters.size() ? device::AccParam{} : Read();
  if (!wanted) return std::nullopt;
  device::AccParam remembered = Kept().value_or(device::AccParam{});
  for (const auto& [parameter, value] : values) {
    SetShownValue(*parameter, *wanted, value);
    SetShownValue(*parameter, remembered, value);
  }
  return ResultOf(Deliver(*wanted, remembered), *wanted);
}

std::optional<device::AccParam> AccelerometerSetup::RestoreDefaults() {
  return ResultOf(Send(FactoryDefaults()), FactoryDefaults());
}

std::optional<device::AccParam> AccelerometerSetup::Kept() const { return m_kept.Find(m_serialNumber); }

std::optional<device::AccParam> AccelerometerSetup::RestoreKept() {
  const auto kept = Kept();
  return kept ? ResultOf(Send(*kept), *kept) : std::nullopt;
}

AccelerometerSetup::Sent AccelerometerSetup::Deliver(const device::AccParam& wanted,
                                                     const device::AccParam& remembered) {
  if (!m_board.SetAccParam(wanted)) return {};
  static_cast<void>(m_board.Reset());
  const auto held = Read();
  if (held && IsFormOf(*held, wanted, m_revision)) Settle(*held, remembered);
  return {true, held};
}

void AccelerometerSetup::Settle(const device::AccParam& held, const device::AccParam& remembered) {
  if (!Kept()) return;
  if (IsFormOf(held, remembered, m_revision))
    m_kept.Forget(m_serialNumber);
  else
    // A disk that refuses leaves the older values remembered, which is still better than none.
    static_cast<void>(m_kept.Keep(m_serialNumber, remembered));
}

std::optional<device::AccParam> AccelerometerSetup::ResultOf(const Sent& sent, const device::AccParam& wanted) {
  return sent.accepted ? std::optional(sent.held.value_or(wanted)) : std::nullopt;
}

}  // namespace kestrin::core::motion
