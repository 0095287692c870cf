// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "core/device/Protocol.h"

namespace kestrin::simulator {

/// A byte of the flash that nothing has been written to since the last erase.
inline constexpr std::uint8_t kErased = 0xFF;

/// On and off counts of one channel of a pulse. The factory's is a channel that is off.
struct ChannelCounts {
  std::uint16_t onLow = 0;
  std::uint16_t offLow = 1;
  std::uint16_t onHigh = 0;
  std::uint16_t offHigh = 1;

  friend bool operator==(const ChannelCounts&, const ChannelCounts&) = default;
};

/// One light pulse as the board holds it; times in milliseconds.
struct PulseState {
  static constexpr std::size_t kChannels = core::device::kPulseChannels;

  std::array<std::uint8_t, kChannels> low{};
  std::array<std::uint8_t, kChannels> high{};
  std::array<ChannelCounts, kChannels> counts{};
  std::uint16_t Trise = 0;
  std::uint16_t Ton = 0;
  std::uint16_t Tfall = 0;
  std::uint16_t Toff = 0;
  std::uint16_t NRep = 0;

  friend bool operator==(const PulseState&, const PulseState&) = default;
};

/// The LED type that a board is set up for.
struct LedConfigState {
  std::uint16_t code = 1;
  /// Supply voltage in tenths of a volt.
  std::uint16_t voltageTenths = 37;
  /// In percent.
  std::uint16_t overdrive = 100;

  friend bool operator==(const LedConfigState&, const LedConfigState&) = default;
};

/// The factory's idle pulse breathes slowly, its flash-on-clash pulse flashes three times. Both are dark: nobody knows
/// in the factory which LED will be fitted and how much it bears.
inline constexpr PulseState kFactoryIdlePulse{{}, {}, {}, 1000, 500, 1000, 500, 0};
inline constexpr PulseState kFactoryFlashPulse{{}, {}, {}, 0, 40, 0, 40, 3};

/// Everything that a board holds beside its flash. A new one is in the factory's state.
struct BoardState {
  /// The `GetID` answer: which model the board is.
  std::uint16_t id = 0;
  std::uint32_t serial = 0x4B535401;
  /// The six detection parameters in command order, the flash period in units of 4 ms.
  std::array<std::uint8_t, core::device::kAccParameters> accelerometer{180, 2, 10, 50, 125, 13};
  std::array<std::uint16_t, core::device::kLedParameters> ledParam{};
  LedConfigState ledConfig;
  /// Idle, then flash on clash.
  std::array<PulseState, 2> ledPulses{kFactoryIdlePulse, kFactoryFlashPulse};
  /// The number that the last StartPulse named.
  std::optional<std::uint8_t> pulseStarted;
  /// How many Reset and Bye commands arrived.
  std::uint32_t resets = 0;
  std::uint32_t byes = 0;

  friend bool operator==(const BoardState&, const BoardState&) = default;
};

}  // namespace kestrin::simulator
