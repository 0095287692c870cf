// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace kestrin::core::led {

// What the numbers in the boxes of times and repetitions mean. Times are milliseconds in a pulse and seconds in a box.

/// The time boxes of the LED setup panel.
enum class TimeBox : std::size_t { IdleTON, IdleTOFF, IdleTRISE, IdleTFALL, FocTON, FocTOFF };

inline constexpr std::array<TimeBox, 6> kTimeBoxes{TimeBox::IdleTON,   TimeBox::IdleTOFF, TimeBox::IdleTRISE,
                                                   TimeBox::IdleTFALL, TimeBox::FocTON,   TimeBox::FocTOFF};

/// The most repetitions of the flash-on-clash pulse.
inline constexpr int kMostRepetitions = 10;

/// The seconds that a box shows for a time of a pulse, rounded to two decimals (1500 gives 1.5).
[[nodiscard]] double SecondsOf(double milliseconds);
/// The same as a text, with "." whatever the locale.
[[nodiscard]] std::string SecondsText(double milliseconds);
/// The time of a pulse for the seconds in a box, in milliseconds, not rounded; finite for infinite ones too.
[[nodiscard]] double MillisecondsOf(double seconds);
/// The seconds that a time box keeps when the person leaves it: cut down to whole multiples of 0.02 s (in single
/// precision), between 0 and the box's upper bound, which is 10 for `IdleTRISE` and 10000 for the others.
[[nodiscard]] double NormalisedTime(TimeBox box, double seconds);
/// The seconds of a time box after so many steps of 0.02 s up, or down when negative, between 0 and the box's upper
/// bound. Steps that leaving the box would take away again are passed over.
[[nodiscard]] double SteppedTime(TimeBox box, double seconds, int steps);

/// The repetitions of a pulse for the number in the repeat box, rounded to the nearest (ties to even).
[[nodiscard]] std::int16_t RepetitionsOf(double number);
/// The number that the repeat box keeps when the person leaves it: a whole one, 1 .. 10, fractions cut off.
[[nodiscard]] double NormalisedRepetitions(double number);

}  // namespace kestrin::core::led
