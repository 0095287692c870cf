// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

namespace kestrin::core::led {

/// A colour value: red in bits 0-7, green in bits 8-15, blue in bits 16-23 (0x00BBGGRR). 0 stands for "no colour".
using Color = std::int32_t;

// The colours that LED channels are known by. Green and blue are not the pure ones: channels are found again by exactly
// these values, and the channel labels, which have to be readable, are painted with them.
inline constexpr Color kWhite = 0xFFFFFF;
inline constexpr Color kRed = 0x0000FF;
inline constexpr Color kGreen = 0x00C000;
inline constexpr Color kBlue = 0xFF8080;
inline constexpr Color kAmber = 0x0080FF;

/// The words that the LED catalogue has for colours.
inline constexpr std::array<std::pair<std::string_view, Color>, 5> kColorWords{
    {{"white", kWhite}, {"red", kRed}, {"green", kGreen}, {"blue", kBlue}, {"amber", kAmber}}};

/// The word for a colour; "" for one that has none.
[[nodiscard]] std::string_view ColorWord(Color color);

/// The three components of a colour, 0 .. 255 each.
struct Components {
  std::int16_t Red = 0;
  std::int16_t Green = 0;
  std::int16_t Blue = 0;
};

/// Gives the colour value that the platform's palette has for a system colour number (0 .. 0x7FFFFFFF).
using SystemColorLookup = std::function<Color(std::int32_t number)>;

// Colour dialogs answer with plain colour values: in the programs nobody asks for a system colour.

/// The components of `sysColor`. A negative value names a system colour: its number, which is the value with bit 31
/// cleared, is looked up through `getSysColor`; otherwise `getSysColor` is not called and may be empty.
[[nodiscard]] Components SysToRGB(std::int32_t sysColor, const SystemColorLookup& getSysColor);

/// The colour value of three components: `red` + `green` * 256 + `blue` * 65536.
/// Throws std::overflow_error when that does not fit 32 bits, which components 0 .. 255 cannot cause.
[[nodiscard]] Color RGBToSys(std::int16_t red, std::int16_t green, std::int16_t blue);

}  // namespace kestrin::core::led
