// SPDX-License-Identifier: MIT
#include "sound/import/SoundBounds.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace kestrin::core::sound {

namespace {

constexpr double kSilence = 0.001;
constexpr std::uint64_t kKeptBefore = 240;
constexpr std::uint64_t kKeptBehind = 960;
constexpr std::uint64_t kWorthCutting = 480;

}  // namespace

std::size_t SoundBounds::HeightOf(double magnitude) {
  // The exponent and the three bits below it: the number grows with the magnitude, eight times for each doubling. From
  // 2^-40 on, since less is silence in any case.
  constexpr std::uint64_t kBitsBelow = 52 - 3;
  constexpr std::uint64_t kLowest = std::uint64_t{1023 - 40} << 3;
  const std::uint64_t number = std::bit_cast<std::uint64_t>(magnitude) >> kBitsBelow;
  return static_cast<std::size_t>(std::clamp(number, kLowest, kLowest + kHeights - 1) - kLowest);
}

void SoundBounds::Add(std::span<const double> samples) {
  for (const double sample : samples) {
    const double magnitude = std::fabs(sample);
    Reached& reached = m_reached[HeightOf(magnitude)];
    if (reached.end == 0) reached.first = m_count;
    reached.end = ++m_count;
    m_peak = magnitude > m_peak ? magnitude : m_peak;
  }
}

Stretch SoundBounds::WithoutSilence() const {
  Stretch loud{m_count, 0};
  for (std::size_t height = HeightOf(m_peak * kSilence); height < kHeights; ++height) {
    if (m_reached[height].end == 0) continue;
    loud.begin = std::min(loud.begin, m_reached[height].first);
    loud.end = std::max(loud.end, m_reached[height].end);
  }
  Stretch kept{0, m_count};
  if (m_peak == 0) return kept;
  const std::uint64_t before = loud.begin - std::min(loud.begin, kKeptBefore);
  const std::uint64_t behind = std::min(m_count, loud.end + kKeptBehind);
  if (before >= kWorthCutting) kept.begin = before;
  if (m_count - behind >= kWorthCutting) kept.end = behind;
  return kept;
}

}  // namespace kestrin::core::sound
