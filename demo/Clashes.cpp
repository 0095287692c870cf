// SPDX-License-Identifier: MIT
#include "demo/Clashes.h"

#include <array>
#include <cmath>

#include "demo/IdleHum.h"

namespace kestrin::demo {

namespace {

struct Blow {
  double seconds;
  /// Lowest tone of the ringing body, in Hz.
  double body;
  /// Middle of the burst, in Hz.
  double burst;
  /// Half-life of the burst in seconds.
  double halfLife;
  std::uint32_t seed;
};

constexpr std::array<Blow, kClashes> kBlows{{{0.95, 271.0, 2100.0, 0.075, 0xC1A50001U},
                                             {0.80, 318.0, 2600.0, 0.062, 0xC1A50002U},
                                             {0.75, 367.0, 3200.0, 0.055, 0xC1A50003U},
                                             {0.65, 441.0, 3800.0, 0.047, 0xC1A50004U},
                                             {0.60, 523.0, 4600.0, 0.040, 0xC1A50005U}}};

/// Tones of a struck bar that is thicker at one end: none is a multiple of another. The highest stays below 7 kHz.
constexpr std::array<double, 9> kRatios{1.0, 1.483, 2.137, 2.871, 3.923, 5.411, 6.87, 9.13, 12.71};

}  // namespace

Sound Clash(int number) {
  const Blow& blow = kBlows.at(static_cast<std::size_t>(number - 1));
  Sound sound(SamplesIn(blow.seconds));
  Noise noise(blow.seed);
  StateVariableFilter burst;
  StateVariableFilter sizzle;
  StateVariableFilter sparks;
  HumVoice voice(40, 12.0);
  Oscillator thump;
  double spark = 0.0;
  for (std::size_t i = 0; i < sound.size(); ++i) {
    const double time = static_cast<double>(i) / kSampleRate;
    const double in = noise.Next();
    // The burst darkens while it fades, as everything that is struck does.
    const double cutoff = blow.burst * (0.5 + 1.4 * Decay(time, 0.03));
    double value = 2.4 * burst.Process(in, cutoff, 0.9).band * Decay(time, blow.halfLife) +
                   0.45 * sizzle.Process(in, 7500.0, 0.7).band * Decay(time, blow.halfLife / 2.0);
    double weight = 1.0;
    for (const double ratio : kRatios) {
      value += 0.42 * weight * std::sin(kTurn * blow.body * ratio * time + 2.4 * ratio) *
               Decay(time, 0.13 / std::sqrt(ratio));
      weight *= 0.87;
    }
    value += 0.9 * std::sin(kTurn * thump.Advance(62.0 + 120.0 * Decay(time, 0.02))) * Decay(time, 0.07);
    // Single sparks, fewer and fewer.
    spark *= 0.996;
    if (noise.NextPositive() < 0.0016 * Decay(time, 0.18)) spark = 0.5 + 0.5 * noise.NextPositive();
    value += 1.5 * sparks.Process(in * spark, 5200.0, 1.2).band;
    // The blade shudders before it comes to rest.
    const double shudder = 1.0 + 0.05 * std::sin(kTurn * 23.0 * time) * Decay(time, 0.15);
    value += 0.16 * voice.Next(shudder) * (0.4 + Decay(time, 0.2));
    sound[i] = value;
  }
  return sound;
}

}  // namespace kestrin::demo
