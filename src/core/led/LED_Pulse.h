// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kestrin::core::led {

class LED_Driver;

/// One light pulse of the LED driver board: two colour levels for each of four channels, the times between them, and
/// the on/off counts that follow from levels and LED type. Channel arguments below 1 mean 1, above 4 mean 4.
class LED_Pulse {
 public:
  static constexpr int kChannels = 4;
  /// What the person is told after a pulse with IsTooLongForBoard() was sent.
  static constexpr const char* kTooLong =
      "The board holds times up to 65.535 s; a longer one plays much shorter. Set less and send it again.";

  /// Milliseconds at the high level.
  double Ton = 0;
  /// Milliseconds at the low level.
  double Toff = 0;
  /// Milliseconds from low to high; 0 for the flash-on-clash pulse.
  double Trise = 0;
  /// Milliseconds from high to low; 0 for the flash-on-clash pulse.
  double Tfall = 0;
  /// Repetitions: 1 .. 10 for the flash-on-clash pulse, 0 for the idle pulse.
  std::int16_t NRep = 0;

  /// Colour level of a channel at the low / high point of the pulse, 0 .. 255 (kept by the callers).
  [[nodiscard]] std::int16_t GetLow(int channel) const { return m_channels[Index(channel)].low; }
  [[nodiscard]] std::int16_t GetHigh(int channel) const { return m_channels[Index(channel)].high; }
  void SetLow(int channel, std::int16_t level) { m_channels[Index(channel)].low = level; }
  void SetHigh(int channel, std::int16_t level) { m_channels[Index(channel)].high = level; }

  /// Device counts, valid once CalculateTimes() ran for the fitted LED type.
  [[nodiscard]] std::int32_t GetTon_Low(int channel) const { return m_channels[Index(channel)].tonLow; }
  [[nodiscard]] std::int32_t GetTon_High(int channel) const { return m_channels[Index(channel)].tonHigh; }
  [[nodiscard]] std::int32_t GetToff_Low(int channel) const { return m_channels[Index(channel)].toffLow; }
  [[nodiscard]] std::int32_t GetToff_High(int channel) const { return m_channels[Index(channel)].toffHigh; }

  /// Whether one of the times is longer than the board can hold, 65535 ms. It is sent all the same, and the board keeps
  /// what is left of it after every full 65536 ms.
  [[nodiscard]] bool IsTooLongForBoard() const;

  /// Derives the counts of the driver's channels from their levels; channels that the LED type does not have keep
  /// theirs.
  void CalculateTimes(const LED_Driver& driver);

 private:
  struct Channel {
    std::int16_t low = 0;
    std::int16_t high = 0;
    std::int32_t tonLow = 0;
    std::int32_t toffLow = 0;
    std::int32_t tonHigh = 0;
    std::int32_t toffHigh = 0;
  };

  [[nodiscard]] static std::size_t Index(int channel) {
    return static_cast<std::size_t>(channel < 1 ? 0 : channel > kChannels ? kChannels - 1 : channel - 1);
  }

  std::array<Channel, kChannels> m_channels;
};

}  // namespace kestrin::core::led
