// SPDX-License-Identifier: MIT
#include "sound/import/Gain.h"

#include <algorithm>
#include <cmath>

namespace kestrin::core::sound {

namespace {

constexpr double kCeiling = -1;
/// What rounding to 16 bits may add to a peak stays below the ceiling.
constexpr double kAim = -1.01;
constexpr double kMostGain = 12;
/// A sound that is quieter has no loudness worth the name.
constexpr double kQuietest = -60;
/// What nobody hears.
constexpr double kNoDifference = 0.05;

}  // namespace

double Gain::Factor() const { return decibels == 0 ? 1 : std::pow(10, decibels / 20); }

Gain ChooseGain(const Loudness& loudness, std::optional<double> level, bool isExact) {
  if (!loudness.truePeak) return {};
  double wanted = 0;
  if (level && loudness.lufs && *loudness.lufs >= kQuietest) wanted = *level - *loudness.lufs;
  Gain gain{std::clamp(wanted, -kMostGain, kMostGain), false};
  if (std::fabs(gain.decibels) < kNoDifference) gain.decibels = 0;
  const bool isLeftAlone = gain.decibels == 0 && *loudness.truePeak <= (isExact ? kCeiling : kAim);
  if (!isLeftAlone) gain.decibels = std::min(gain.decibels, kAim - *loudness.truePeak);
  gain.isLimited = level.has_value() && std::fabs(wanted - gain.decibels) > kNoDifference;
  return gain;
}

}  // namespace kestrin::core::sound
