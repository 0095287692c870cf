// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "led/PulseContent.h"

namespace kestrin::core::ledsetup {

/// Where pulses are besides on the panel: what the board told or was sent last, and what a settings file holds.
class KnownPulses {
 public:
  /// The board has told these.
  void Told(const led::Pulses& pulses);
  /// The board has taken this one; `whole` unless it cuts its times.
  void Sent(std::int32_t pulseId, const led::PulseContent& pulse, bool whole);
  /// A settings file holds these.
  void InFile(const led::Pulses& pulses) { m_inFile = pulses; }

  /// Whether that is what the board told of the pulse or was sent last.
  [[nodiscard]] bool IsSent(std::int32_t pulseId, const led::PulseContent& pulse) const {
    return pulse == m_sent.at(static_cast<std::size_t>(pulseId));
  }
  /// Whether one of them is neither on the board nor in a file as it is.
  [[nodiscard]] bool WouldBeLost(const led::Pulses& pulses) const;

 private:
  led::Pulses m_sent;
  /// What of that the board holds as it is: it cuts times that are too long.
  std::array<std::optional<led::PulseContent>, 2> m_onBoard{led::PulseContent{}, led::PulseContent{}};
  std::optional<led::Pulses> m_inFile;
};

}  // namespace kestrin::core::ledsetup
