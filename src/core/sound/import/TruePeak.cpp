// SPDX-License-Identifier: MIT
#include "sound/import/TruePeak.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestrin::core::sound {

TruePeak::TruePeak() : m_samples(kReach + kBlock, 0.0F) {
  constexpr auto kMiddle = static_cast<double>(kTimes * kReach) / 2;
  for (std::size_t place = 1; place < kTimes; ++place) {
    double sum = 0;
    for (std::size_t sample = 0; sample < kReach; ++sample) {
      const auto point = static_cast<double>(kTimes * sample + place);
      const double angle = std::numbers::pi * (point - kMiddle) / kTimes;
      const double window = 0.5 * (1 - std::cos(std::numbers::pi * point / kMiddle));
      const double factor = window * std::sin(angle) / angle;
      m_filter[place - 1][sample] = static_cast<float>(factor);
      sum += std::fabs(factor);
    }
    m_most = std::max(m_most, static_cast<float>(sum));
  }
}

void TruePeak::Add(std::span<const double> samples) {
  while (!samples.empty()) {
    const std::size_t count = std::min(samples.size(), m_samples.size() - m_filled);
    for (std::size_t i = 0; i < count; ++i) m_samples[m_filled + i] = static_cast<float>(samples[i]);
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
  std::fill(m_samples.begin() + static_cast<std::ptrdiff_t>(m_filled), m_samples.end(), 0.0F);
  Look();
  return static_cast<double>(m_peak);
}

float TruePeak::HighestOf(const float* values, std::size_t count) {
  // Several at a time, side by side, as the processor can compare them at once.
  constexpr std::size_t kLanes = 16;
  std::array<float, kLanes> highest{};
  const std::size_t whole = count / kLanes * kLanes;
  for (std::size_t i = 0; i < whole; i += kLanes)
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      const float height = std::fabs(values[i + lane]);
      highest[lane] = height > highest[lane] ? height : highest[lane];
    }
  for (std::size_t i = whole; i < count; ++i) highest[0] = std::max(highest[0], std::fabs(values[i]));
  return *std::max_element(highest.begin(), highest.end());
}

void TruePeak::Look() {
  const float* const block = m_samples.data() + kReach;
  const float highest = HighestOf(m_samples.data(), m_samples.size());
  m_peak = std::max(m_peak, HighestOf(block, kBlock));
  // Where the sound is quiet no point between the samples can be higher than what was found elsewhere.
  if (highest * m_most > m_peak)
    for (const auto& filter : m_filter) {
      m_between.fill(0);
      for (std::size_t sample = 0; sample < kReach; ++sample) {
        const float factor = filter[sample];
        const float* const from = block - sample;
        for (std::size_t i = 0; i < kBlock; ++i) m_between[i] += factor * from[i];
      }
      m_peak = std::max(m_peak, HighestOf(m_between.data(), kBlock));
    }
  std::copy(m_samples.end() - kReach, m_samples.end(), m_samples.begin());
  m_filled = kReach;
}

}  // namespace kestrin::core::sound
