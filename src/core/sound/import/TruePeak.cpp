// SPDX-License-Identifier: MIT
#include "sound/import/TruePeak.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestrin::core::sound {

TruePeak::TruePeak() : m_samples(kReach + kBlock, 0.0) {
  constexpr auto kMiddle = static_cast<double>(kTimes * kReach) / 2;
  for (std::size_t place = 1; place < kTimes; ++place)
    for (std::size_t sample = 0; sample < kReach; ++sample) {
      const auto point = static_cast<double>(kTimes * sample + place);
      const double angle = std::numbers::pi * (point - kMiddle) / kTimes;
      const double window = 0.5 * (1 - std::cos(std::numbers::pi * point / kMiddle));
      m_filter[place - 1][sample] = window * std::sin(angle) / angle;
    }
}

void TruePeak::Add(std::span<const double> samples) {
  while (!samples.empty()) {
    const std::size_t count = std::min(samples.size(), m_samples.size() - m_filled);
    std::copy_n(samples.begin(), count, m_samples.begin() + static_cast<std::ptrdiff_t>(m_filled));
    m_filled += count;
    samples = samples.subspan(count);
    if (m_filled == m_samples.size()) Look();
  }
}

double TruePeak::Finish() {
  // The last samples have their say in points that lie behind them.
  for (std::size_t silent = 0; silent < kReach; ++silent) {
    const double silence = 0;
    Add({&silence, 1});
  }
  std::fill(m_samples.begin() + static_cast<std::ptrdiff_t>(m_filled), m_samples.end(), 0.0);
  Look();
  return *std::max_element(m_peaks.begin(), m_peaks.end());
}

void TruePeak::Look() {
  const auto keepPeaks = [this](const double* values) {
    for (std::size_t i = 0; i < kBlock; i += kLanes)
      for (std::size_t lane = 0; lane < kLanes; ++lane) {
        const double height = std::fabs(values[i + lane]);
        m_peaks[lane] = height > m_peaks[lane] ? height : m_peaks[lane];
      }
  };
  const double* const block = m_samples.data() + kReach;
  keepPeaks(block);
  for (const auto& filter : m_filter) {
    m_between.fill(0);
    for (std::size_t sample = 0; sample < kReach; ++sample) {
      const double factor = filter[sample];
      const double* const from = block - sample;
      for (std::size_t i = 0; i < kBlock; ++i) m_between[i] += factor * from[i];
    }
    keepPeaks(m_between.data());
  }
  std::copy(m_samples.end() - kReach, m_samples.end(), m_samples.begin());
  m_filled = kReach;
}

}  // namespace kestrin::core::sound
