// SPDX-License-Identifier: MIT
#include "demo/Lockups.h"

#include <array>
#include <cmath>

#include "demo/IdleHum.h"

namespace kestrin::demo {

namespace {

/// Everything that turns in a loop of this length does so in multiples of half a Hz.
constexpr double kLockupSeconds = 2.0;

struct Hold {
  /// Tone of the strained blades, in Hz.
  double hz;
  /// Trembling, in Hz, slow and fast.
  double slow;
  double fast;
  /// Cracks a second.
  double cracks;
  /// Middle of their noise, in Hz.
  double crackle;
  std::uint32_t seed;
};

constexpr std::array<Hold, kLockups> kHolds{{{kHumPitch * 1.25, 4.5, 31.0, 55.0, 2800.0, 0x10C40001U},
                                             {kHumPitch * 1.5, 6.5, 43.5, 80.0, 3600.0, 0x10C40002U}}};

}  // namespace

Sound Lockup(int number) {
  const Hold& hold = kHolds.at(static_cast<std::size_t>(number - 1));
  const std::vector<double> harmonics = GentleHarmonics(40, 10.0);
  Sound sound(SamplesIn(kLockupSeconds));
  StateVariableFilter crackle;
  StateVariableFilter hiss;
  double crack = 0.0;
  // Two rounds with the same noise: what the first one leaves in the filters is what the second one ends with.
  for (int round = 0; round < 2; ++round) {
    Noise noise(hold.seed);
    for (std::size_t i = 0; i < sound.size(); ++i) {
      const double time = static_cast<double>(i) / kSampleRate;
      const double in = noise.Next();
      const double chance = noise.NextPositive();
      const double tremble = (1.0 + 0.35 * std::sin(kTurn * hold.slow * time)) *
                             (1.0 + 0.45 * std::sin(kTurn * hold.fast * time + std::sin(kTurn * hold.slow * time)));
      crack *= 0.9965;
      if (chance < hold.cracks / kSampleRate) crack = 0.4 + 0.6 * std::abs(in);
      const double cracks = crackle.Process(in * crack, hold.crackle, 0.9).band;
      const double air = hiss.Process(in, 1.7 * hold.crackle, 0.6).band;
      const double blade =
          HarmonicSum(hold.hz * time, harmonics) + 0.8 * HarmonicSum((hold.hz + 1.5) * time, harmonics);
      sound[i] = 0.55 * tremble * blade + 3.2 * cracks + 0.22 * tremble * air;
    }
  }
  return sound;
}

}  // namespace kestrin::demo
