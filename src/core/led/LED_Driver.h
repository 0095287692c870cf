// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/Result.h"
#include "led/Color.h"

namespace kestrin::core::led {

class LED_RecordReader;

/// What the value given to LED_Driver::GetTon() and GetToff() is. Any other number asks for an LED that is off.
enum class SetType : std::int32_t {
  DutyCycle = 0,       ///< a duty cycle in percent
  Luminance = 1,       ///< a luminance, 0 .. the channel's `MaxLum`
  PercentOfMaxDC = 2,  ///< a percentage of the channel's `MaxDC`
};

/// One LED type of the catalogue, and the conversions between colour levels (0 .. 255), luminance, duty cycle and the
/// on/off counts of the driver board. A new object is empty: every field is 0.
///
/// Channels are counted from 1. Where a method says "clamped", a channel below 1 means 1 and one above `NrOfChannels`
/// means `NrOfChannels`.
class LED_Driver {
 public:
  static constexpr int kChannels = 4;

  /// Name of the LED type as the list of types shows it.
  std::string LEDName;
  /// Channels in use, 1 .. 4.
  std::int16_t NrOfChannels = 0;
  /// The type's code, which the board stores and reports.
  std::int16_t LedCode = 0;
  /// Length of one PWM period in device counts, 10 .. 10000.
  std::int32_t Period = 0;
  /// Supply voltage that the board reports. No conversion reads it.
  double Voltage = 0;
  /// Overdrive in percent, 100 = nominal. Scales every duty cycle between off and full drive.
  double OverDrive = 0;

  /// Reads one record of the catalogue:
  ///
  ///     {name}@{code}#{channels}#{period}  and for each channel
  ///     +Col={colour}ML{maxlum}MDC{maxdc}VL{volt}Coef{a3}_{a2}_{a1}_{a0};{c3}_{c2}_{c1}_{c0};
  ///
  /// Fails at the first check that fails; fields read until then keep their new values. A valid record with more than
  /// one channel sets `OverDrive` to 100; with one channel `OverDrive` keeps its value. The text of a failure says
  /// which field is wrong and what it may be, for the person who edits the catalogue.
  base::Result<> Init(std::string_view stringLine);

  /// The on-count for a wanted brightness (channel clamped): 0 when `setValue` is 0, else 1.
  [[nodiscard]] std::int32_t GetTon(SetType setType, int channel, double setValue) const;

  /// The colour of a channel; 0 when the LED type does not have it.
  /// Throws std::out_of_range for a channel outside 1 .. 4: this one is not clamped.
  [[nodiscard]] Color GetChannelColor(int channel) const;

  /// The last channel of that colour, 1 .. 4; 0 when no channel has it.
  [[nodiscard]] std::int16_t FindColor(Color color) const;

  /// The highest duty cycle, in percent, that the channel (clamped) may be driven with at nominal overdrive.
  [[nodiscard]] std::int32_t GetMaxDC(int channel) const { return m_channels[Index(channel)].MaxDC; }

  /// The most overdrive that this type is driven with, in percent: its strongest channel in use then reaches a duty
  /// cycle of 100 %. Throws std::out_of_range for a type that has no channel.
  [[nodiscard]] std::int32_t MostOverdrive() const;

  /// The luminance of the channel (clamped) at full level.
  [[nodiscard]] std::int32_t GetMaxLum(int channel) const { return m_channels[Index(channel)].MaxLum; }

  /// The forward voltage of the channel (clamped). Only shown to people; no conversion reads it.
  [[nodiscard]] double GetChannelVoltage(int channel) const { return m_channels[Index(channel)].ChannelVoltage; }

  /// The off-count for a wanted brightness (channel clamped): 1 when off, `Period` + 1 at full drive, else 2 ..
  /// `Period` + 1. A duty cycle of 100 % or more and a luminance of `MaxLum` or more are full drive whatever
  /// `OverDrive` is; everything below is scaled by it. Throws std::overflow_error when `Period` is the largest 32-bit
  /// number, which no valid record has.
  [[nodiscard]] std::int32_t GetToff(SetType setType, int channel, double setValue) const;

  /// The luminance that a white-balanced level stands for: `colorValue` (0 .. 255) of the luminance of the weakest red,
  /// green or blue channel, at most 50000. The except flags leave a colour out of the search for the weakest. The
  /// colour itself does not matter.
  [[nodiscard]] std::int32_t ConvertRGBtoLuminance(Color color, std::int16_t colorValue, bool exceptR, bool exceptG,
                                                   bool exceptB) const;

  /// The level (0 .. 255) of the channel of that colour for a luminance; -1 when no channel has the colour.
  /// Throws std::overflow_error when the luminance is too large for 32-bit arithmetic or the level for 16 bits.
  [[nodiscard]] std::int16_t ConvertLuminanceToRGB(Color color, std::int32_t luminance) const;

 private:
  /// c0 .. c3 of the cubic c3*x^3 + c2*x^2 + c1*x + c0.
  using Cubic = std::array<double, 4>;

  struct Channel {
    Color ChannelColor = 0;
    std::int32_t MaxLum = 0;
    std::int32_t MaxDC = 0;
    double ChannelVoltage = 0;
    /// Kept because the record has it; no conversion reads it.
    Cubic LumCoef{};
    /// Duty cycle in percent over luminance.
    Cubic DutyCoef{};
    std::int32_t TonBase = 0;
  };

  [[nodiscard]] bool ReadRecord(std::string_view line, LED_RecordReader& reader);
  [[nodiscard]] static bool ReadChannel(std::string_view text, const std::string& place, LED_RecordReader& reader,
                                        Channel& channel);
  [[nodiscard]] static bool ReadCubic(std::string_view text, LED_RecordReader& reader, Cubic& cubic);
  [[nodiscard]] static Color ColorNameToValue(std::string_view word);

  /// The place of a clamped channel; inside the four even when a refused record left a wild `NrOfChannels`.
  [[nodiscard]] std::size_t Index(int channel) const;

  std::array<Channel, kChannels> m_channels;
};

}  // namespace kestrin::core::led
