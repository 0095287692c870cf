// SPDX-License-Identifier: MIT
#include "sound/import/Dither.h"

#include <algorithm>
#include <cmath>

namespace kestrin::core::sound {

namespace {

/// In steps of the 16 bits: less is what converting leaves of silence.
constexpr double kSilent = 1.0 / 1024;

}  // namespace

double Dither::Noise() {
  m_state = m_state * 6364136223846793005U + 1442695040888963407U;
  // The upper bits are the better ones; two numbers of 24 bits make the triangle.
  const auto first = static_cast<std::int32_t>(m_state >> 40);
  const auto second = static_cast<std::int32_t>(m_state >> 16 & 0xFFFFFF);
  return static_cast<double>(first - second) / (1 << 24);
}

std::int16_t Dither::Rounded(double sample) {
  const auto whole = static_cast<std::int32_t>(std::clamp(sample, -32768.0, 32767.0) + 32768.5) - 32768;
  if (m_isExact && static_cast<double>(whole) == sample) return static_cast<std::int16_t>(whole);
  const double noisy = std::clamp(sample + Noise(), -32768.0, 32767.0);
  // Above zero, cutting the fraction off rounds to the nearest.
  return static_cast<std::int16_t>(static_cast<std::int32_t>(noisy + 32768.5) - 32768);
}

void Dither::Add(std::span<const double> samples, std::vector<std::int16_t>& out) {
  for (const double sample : samples) {
    const double scaled = sample * m_factor;
    if (std::fabs(scaled) < kSilent) {
      if (m_silent == kStretch) {
        out.push_back(0);
      } else if (++m_silent == kStretch) {
        out.insert(out.end(), kStretch, 0);
      }
      continue;
    }
    if (m_silent != 0) Finish(out);
    out.push_back(Rounded(scaled));
  }
}

void Dither::Finish(std::vector<std::int16_t>& out) {
  if (m_silent < kStretch)
    for (; m_silent > 0; --m_silent) out.push_back(Rounded(0));
  m_silent = 0;
}

}  // namespace kestrin::core::sound
