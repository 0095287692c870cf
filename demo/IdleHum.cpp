// SPDX-License-Identifier: MIT
#include "demo/IdleHum.h"

#include <array>
#include <cmath>

namespace kestrin::demo {

namespace {

constexpr double kLoopSeconds = 3.0;
/// Tones fit the loop in whole turns when they are multiples of this.
constexpr double kGrid = 1.0 / kLoopSeconds;

}  // namespace

double HumVoice::Next(double bend) {
  return HarmonicSum(m_middle.Advance(kHumPitch * bend), m_amplitudes) +
         0.7 * HarmonicSum(m_above.Advance((kHumPitch + kGrid) * bend), m_amplitudes) +
         0.6 * HarmonicSum(m_below.Advance((kHumPitch - 2.0 * kGrid) * bend), m_amplitudes);
}

Sound IdleHum() {
  constexpr double kVibratoTurns = 0.035;
  struct Layer {
    double hz;
    double level;
    double sway;
  };
  // Hum, its fifth and its octave, each with a sister tone beside it.
  constexpr std::array<Layer, 5> kLayers{{{kHumPitch, 1.0, 2 * kGrid},
                                          {kHumPitch + kGrid, 0.8, 1 * kGrid},
                                          {kHumPitch * 1.5 + kGrid, 0.22, 4 * kGrid},
                                          {kHumPitch * 2.0 - kGrid, 0.35, 3 * kGrid},
                                          {kHumPitch / 2.0, 0.3, 1 * kGrid}}};
  constexpr std::size_t kHarmonics = 32;
  const std::vector<double> dark = GentleHarmonics(kHarmonics, 4.0);
  const std::vector<double> bright = GentleHarmonics(kHarmonics, 12.0);

  Sound sound(SamplesIn(kLoopSeconds));
  for (std::size_t i = 0; i < sound.size(); ++i) {
    const double time = static_cast<double>(i) / kSampleRate;
    for (const Layer& layer : kLayers) {
      const double sway = std::sin(kTurn * layer.sway * time);
      const double phase = layer.hz * time + kVibratoTurns * sway;
      // Opening and closing like a filter that breathes.
      const double open = 0.5 + 0.4 * std::sin(kTurn * (layer.sway + kGrid) * time + layer.hz);
      sound[i] += layer.level * ((1.0 - open) * HarmonicSum(phase, dark) + open * HarmonicSum(phase, bright));
    }
  }
  // A breath of air: noise filtered round and round, so that the filter's memory closes at the seam as well.
  StateVariableFilter filter;
  for (int round = 0; round < 2; ++round) {
    Noise noise(0x1D1E0001U);
    for (std::size_t i = 0; i < sound.size(); ++i) {
      const double time = static_cast<double>(i) / kSampleRate;
      const double air = filter.Process(noise.Next(), 900.0 + 250.0 * std::sin(kTurn * kGrid * time), 0.8).band;
      if (round == 1) sound[i] += 0.09 * air;
    }
  }
  return sound;
}

}  // namespace kestrin::demo
