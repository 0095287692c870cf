// SPDX-License-Identifier: MIT
#include "led/PulseTimes.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/Numbers.h"
#include "base/PlainNumber.h"

namespace kestrin::core::led {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
/// How finely the boxes count.
constexpr int kStepsPerSecond = 50;

double RoundToTwoDecimals(double number) {
  const double hundredths = base::RoundHalfEven(number * 100);
  // A number too large for that has no decimals.
  return std::isfinite(hundredths) ? hundredths / 100 : number;
}

template <typename Limited>
double InLimits(double number) {
  return std::clamp<double>(number, std::numeric_limits<Limited>::lowest(), std::numeric_limits<Limited>::max());
}

/// The most seconds that a box takes.
double UpperBound(TimeBox box) { return box == TimeBox::IdleTRISE ? 10 : 10000; }

}  // namespace

double SecondsOf(double milliseconds) { return RoundToTwoDecimals(milliseconds / kMillisecondsPerSecond); }

std::string SecondsText(double milliseconds) { return base::PlainNumber(SecondsOf(milliseconds)); }

double MillisecondsOf(double seconds) { return InLimits<double>(seconds * kMillisecondsPerSecond); }

double NormalisedTime(TimeBox box, double seconds) {
  // The boxes have always counted in single precision.
  const auto typed = static_cast<float>(InLimits<float>(seconds));
  const float cut = std::floor(typed * kStepsPerSecond) / kStepsPerSecond;
  return std::clamp(RoundToTwoDecimals(cut), 0.0, UpperBound(box));
}

double SteppedTime(TimeBox box, double seconds, int steps) {
  const double last = UpperBound(box) * kStepsPerSecond;
  // A time of the board may be one that the box does not keep, so it is not cut as if the box were left.
  constexpr double kHair = 1e-6;
  const double from = std::floor(seconds * kStepsPerSecond + kHair);
  double step = std::clamp(std::clamp(from, 0.0, last) + steps, 0.0, last);
  const auto shown = [&step] { return SecondsOf(step * kMillisecondsPerSecond / kStepsPerSecond); };
  // Both bounds are kept, so this ends there at the latest.
  while (NormalisedTime(box, shown()) != shown()) step += steps < 0 ? -1 : 1;
  return shown();
}

std::int16_t RepetitionsOf(double number) { return base::RoundTo<std::int16_t>(InLimits<std::int16_t>(number)); }

double NormalisedRepetitions(double number) { return std::clamp<double>(std::floor(number), 1, kMostRepetitions); }

}  // namespace kestrin::core::led
