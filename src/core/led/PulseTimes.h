#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kestrin::core::led {

// What the text boxes of times and repetitions say, and what they mean. Times are milliseconds in a pulse and seconds
// in a box; numbers are written with "." whatever the locale, and read so.

/// The time boxes of the LED setup panel.
enum class TimeBox : std::size_t { IdleTON, IdleTOFF, IdleTRISE, IdleTFALL, FocTON, FocTOFF };

inline constexpr std::array<TimeBox, 6> kTimeBoxes{TimeBox::IdleTON,   TimeBox::IdleTOFF, TimeBox::IdleTRISE,
                                                   TimeBox::IdleTFALL, TimeBox::FocTON,   TimeBox::FocTOFF};

/// The most seconds that a box takes: 10 for `IdleTRISE`, 10000 for the others.
[[nodiscard]] double UpperBound(TimeBox box);

/// The most repetitions of the flash-on-clash pulse.
inline constexpr int kMostRepetitions = 10;

/// The text of a box for a time of a pulse: seconds, rounded to two decimals (1500 gives "1.5").
[[nodiscard]] std::string SecondsText(double milliseconds);
/// The time that a box's text stands for, in milliseconds, not rounded; 0 for a text without a number.
[[nodiscard]] double MillisecondsOf(std::string_view text);
/// The text that a time box keeps when the person leaves it: cut down to whole multiples of 0.02 s (in single
/// precision), between 0 and the box's upper bound.
[[nodiscard]] std::string NormalisedTime(TimeBox box, std::string_view text);
/// The text of a time box after so many steps of 0.02 s up, or down when negative, between 0 and the box's upper bound.
/// Steps that leaving the box would take away again are passed over.
[[nodiscard]] std::string SteppedTime(TimeBox box, std::string_view text, int steps);

/// The number of repetitions that the repeat box's text stands for, rounded to the nearest (ties to even).
[[nodiscard]] std::int16_t RepetitionsOf(std::string_view text);
/// The text that the repeat box keeps when the person leaves it: a whole number 1 .. 10, fractions cut off.
[[nodiscard]] std::string NormalisedRepetitions(std::string_view text);

}  // namespace kestrin::core::led
