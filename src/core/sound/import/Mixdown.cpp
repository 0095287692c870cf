// SPDX-License-Identifier: MIT
#include "sound/import/Mixdown.h"

#include <algorithm>
#include <cmath>

namespace kestrin::core::sound {

namespace {

/// What is left of channels that cancel each other out is no more than rounding: 60 dB down.
constexpr double kNextToNothing = 0.001;

}  // namespace

Mixdown::Mixdown(std::size_t channels, std::optional<std::size_t> only) : m_only(only), m_peaks(channels, 0.0) {}

void Mixdown::Add(std::span<const double> frames, std::vector<double>& out) {
  const std::size_t channels = m_peaks.size();
  if (channels == 1) {
    out.insert(out.end(), frames.begin(), frames.end());
    return;
  }
  const auto share = static_cast<double>(channels);
  for (std::size_t i = 0; i + channels <= frames.size(); i += channels) {
    double sum = 0;
    for (std::size_t channel = 0; channel < channels; ++channel) {
      const double sample = frames[i + channel];
      const double height = std::fabs(sample);
      m_peaks[channel] = height > m_peaks[channel] ? height : m_peaks[channel];
      sum += sample;
    }
    const double mono = m_only ? frames[i + *m_only] : sum / share;
    m_peak = std::max(m_peak, std::fabs(mono));
    out.push_back(mono);
  }
}

std::size_t Mixdown::LoudestChannel() const {
  return static_cast<std::size_t>(std::max_element(m_peaks.begin(), m_peaks.end()) - m_peaks.begin());
}

bool Mixdown::IsCancelledOut() const {
  return m_peaks.size() > 1 && !m_only && m_peak < kNextToNothing * m_peaks[LoudestChannel()];
}

std::string Mixdown::Text() const {
  if (m_peaks.size() == 1) return "";
  const std::string from = m_peaks.size() == 2 ? "stereo" : std::to_string(m_peaks.size()) + " channels";
  if (!m_only) return from + " to mono";
  return from + " to its channel " + std::to_string(*m_only + 1) + ", since together they cancel out";
}

}  // namespace kestrin::core::sound
