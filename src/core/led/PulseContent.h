// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

#include "led/LED_Pulse.h"

namespace kestrin::core::led {

/// What the board calls its pulses.
inline constexpr std::int32_t kIdlePulse = 0;
inline constexpr std::int32_t kFocPulse = 1;

/// What a person sets of a pulse: what follows from that and from the LED type is left out.
struct PulseContent {
  using Levels = std::array<std::int16_t, LED_Pulse::kChannels>;

  /// Of the flash-on-clash pulse only the high ones: it starts from the idle pulse's.
  Levels low{};
  Levels high{};
  /// In milliseconds.
  double Ton = 0;
  double Toff = 0;
  double Trise = 0;
  double Tfall = 0;
  std::int16_t NRep = 0;

  friend bool operator==(const PulseContent&, const PulseContent&) = default;
};

/// Both pulses, by their number.
using Pulses = std::array<PulseContent, 2>;

}  // namespace kestrin::core::led
