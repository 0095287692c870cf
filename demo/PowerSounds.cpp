// SPDX-License-Identifier: MIT
#include "demo/PowerSounds.h"

#include <array>
#include <cmath>

#include "demo/IdleHum.h"

namespace kestrin::demo {

namespace {

/// Crossfades from few harmonics to many with `open` 0 .. 1, like a filter that opens.
class OpeningVoice {
 public:
  [[nodiscard]] double Next(double bend, double open) {
    return (1.0 - open) * m_dark.Next(bend) + open * m_bright.Next(bend);
  }

 private:
  HumVoice m_dark{48, 2.5};
  HumVoice m_bright{48, 16.0};
};

}  // namespace

Sound BootChime() {
  struct Tone {
    double at;
    double ratio;
    double level;
  };
  // Root, fifth, octave, ninth, twelfth: an open chord two octaves above the hum.
  constexpr std::array<Tone, 5> kTones{
      {{0.00, 1.0, 1.0}, {0.16, 1.5, 0.9}, {0.32, 2.0, 0.85}, {0.48, 2.25, 0.7}, {0.66, 3.0, 0.65}}};
  constexpr double kRoot = 4.0 * kHumPitch;
  Sound sound(SamplesIn(2.2));
  const std::vector<double> soft = GentleHarmonics(6, 1.5);
  Noise noise(0xB0070001U);
  StateVariableFilter shimmer;
  for (std::size_t i = 0; i < sound.size(); ++i) {
    const double time = static_cast<double>(i) / kSampleRate;
    double value = 0.0;
    for (const Tone& tone : kTones) {
      const double since = time - tone.at;
      if (since < 0.0) continue;
      const double hz = kRoot * tone.ratio;
      const double vibrato = 0.02 * std::sin(kTurn * 5.0 * since);
      const double bell = std::sin(kTurn * hz * since + vibrato) * Decay(since, 0.35) +
                          0.45 * std::sin(kTurn * hz * 2.004 * since) * Decay(since, 0.2) +
                          0.25 * std::sin(kTurn * hz * 3.01 * since) * Decay(since, 0.1) +
                          0.12 * std::sin(kTurn * hz * 5.43 * since) * Decay(since, 0.05);
      value += tone.level * SoftStep(0.0, 0.006, since) * bell;
    }
    const double swell = SoftStep(0.0, 0.9, time) * (1.0 - SoftStep(1.2, 2.2, time));
    value += 0.35 * swell *
             (HarmonicSum(kRoot / 2.0 * time, soft) + HarmonicSum(kRoot / 2.0 * 1.003 * time, soft) +
              0.7 * HarmonicSum(kRoot * 0.75 * time, soft));
    value += 0.12 * swell * shimmer.Process(noise.Next(), 5000.0 + 1500.0 * std::sin(kTurn * 0.7 * time), 2.5).band;
    sound[i] = value;
  }
  return sound;
}

Sound PowerOn() {
  Sound sound(SamplesIn(1.3));
  OpeningVoice voice;
  Noise noise(0x00E00001U);
  StateVariableFilter air;
  StateVariableFilter snap;
  for (std::size_t i = 0; i < sound.size(); ++i) {
    const double time = static_cast<double>(i) / kSampleRate;
    const double climb = SoftStep(0.0, 0.55, time);
    // It climbs past the hum's pitch and settles on it.
    const double bend = 0.3 + 0.7 * climb + 0.14 * climb * Decay(time, 0.22);
    const double open = climb * (0.45 + 0.55 * Decay(time, 0.4));
    const double in = noise.Next();
    const double rush = air.Process(in, 300.0 + 4200.0 * climb, 1.4).band;
    const double level = SoftStep(0.05, 0.5, time) * (1.0 - 0.45 * SoftStep(0.6, 1.2, time));
    sound[i] = 1.1 * level * voice.Next(bend, open) +
               2.4 * rush * SoftStep(0.0, 0.12, time) * (1.0 - SoftStep(0.25, 0.85, time)) +
               1.6 * snap.Process(in, 3200.0, 1.0).band * Decay(time, 0.018);
  }
  return sound;
}

Sound PowerOff() {
  Sound sound(SamplesIn(1.3));
  OpeningVoice voice;
  Noise noise(0x00F00001U);
  StateVariableFilter air;
  for (std::size_t i = 0; i < sound.size(); ++i) {
    const double time = static_cast<double>(i) / kSampleRate;
    const double fall = SoftStep(0.1, 1.15, time);
    const double bend = 1.0 + 0.1 * SoftStep(0.0, 0.12, time) * (1.0 - SoftStep(0.1, 0.3, time)) - 0.74 * fall;
    const double open = 0.55 * (1.0 - fall);
    const double rush = air.Process(noise.Next(), 3600.0 * (1.0 - fall) + 220.0, 1.3).band;
    sound[i] = (1.0 - 0.85 * fall) * voice.Next(bend, open) +
               1.7 * rush * SoftStep(0.0, 0.2, time) * (1.0 - SoftStep(0.35, 1.2, time));
  }
  return sound;
}

}  // namespace kestrin::demo
