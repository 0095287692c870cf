// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <memory>
#include <span>

#include "core/sound/import/LoudnessMeter.h"

namespace kestrin::support {

/// Measures the mean energy, which the ear has no part in: easy to work out by hand. Below -50 there is no loudness.
class EnergyMeter final : public core::sound::LoudnessMeter {
 public:
  void Add(std::span<const double> samples) override {
    for (const double sample : samples) {
      m_energy += sample * sample;
      m_highest = std::max(m_highest, std::abs(sample));
    }
    m_count += static_cast<double>(samples.size());
  }

  [[nodiscard]] core::sound::Loudness Finish() override {
    core::sound::Loudness loudness;
    if (const double lufs = 10 * std::log10(m_energy / m_count); lufs > -50) loudness.lufs = lufs;
    if (m_highest > 0) loudness.truePeak = 20 * std::log10(m_highest);
    return loudness;
  }

  [[nodiscard]] static std::unique_ptr<core::sound::LoudnessMeter> Make() { return std::make_unique<EnergyMeter>(); }

 private:
  double m_energy = 0;
  double m_highest = 0;
  double m_count = 0;
};

}  // namespace kestrin::support
