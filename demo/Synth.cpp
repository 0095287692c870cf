// SPDX-License-Identifier: MIT
#include "demo/Synth.h"

#include <algorithm>
#include <cmath>

namespace kestrin::demo {

std::size_t SamplesIn(double seconds) { return static_cast<std::size_t>(std::lround(seconds * kSampleRate)); }

double Noise::Next() {
  m_state ^= m_state << 13;
  m_state ^= m_state >> 17;
  m_state ^= m_state << 5;
  return static_cast<double>(m_state) / 2147483648.0 - 1.0;
}

double Oscillator::Advance(double hz) {
  const double now = m_phase;
  m_phase += hz / kSampleRate;
  m_phase -= std::floor(m_phase);
  return now;
}

double HarmonicSum(double phase, std::span<const double> amplitudes) {
  // sin(k x) follows from the two harmonics below it: one sine and one cosine are enough for all of them.
  const double x = phase * kTurn;
  const double twiceCosine = 2.0 * std::cos(x);
  double below = 0.0;
  double harmonic = std::sin(x);
  double sum = 0.0;
  for (const double amplitude : amplitudes) {
    sum += amplitude * harmonic;
    const double above = twiceCosine * harmonic - below;
    below = harmonic;
    harmonic = above;
  }
  return sum;
}

std::vector<double> GentleHarmonics(std::size_t count, double brightness) {
  std::vector<double> amplitudes(count);
  for (std::size_t i = 0; i < count; ++i) {
    const double k = static_cast<double>(i + 1);
    amplitudes[i] = 1.0 / (k * (1.0 + (k / brightness) * (k / brightness)));
  }
  return amplitudes;
}

StateVariableFilter::Bands StateVariableFilter::Process(double in, double cutoff, double resonance) {
  // Trapezoidal integrators: stable and in tune wherever the cutoff moves.
  const double g = std::tan(kTurn / 2.0 * cutoff / kSampleRate);
  const double damping = 1.0 / resonance;
  const double high = (in - (damping + g) * m_first - m_second) / (1.0 + g * (g + damping));
  const double band = g * high + m_first;
  const double low = g * band + m_second;
  m_first = g * high + band;
  m_second = g * band + low;
  return {low, band * damping, high};
}

double SoftStep(double from, double to, double x) {
  const double t = std::clamp((x - from) / (to - from), 0.0, 1.0);
  return t * t * (3.0 - 2.0 * t);
}

double Decay(double seconds, double halfLife) { return std::exp2(-seconds / halfLife); }

}  // namespace kestrin::demo
