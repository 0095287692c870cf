// SPDX-License-Identifier: MIT
#include "demo/Swings.h"

#include <array>
#include <cmath>

#include "demo/IdleHum.h"

namespace kestrin::demo {

namespace {

struct Flight {
  double seconds;
  /// The moment at which the blade is nearest, as part of the length.
  double nearest;
  /// How far the pitch goes up before and down after that moment.
  double bend;
  /// How long the passing takes, in seconds: small is near and quick.
  double passing;
  /// Middle of the air's rushing, in Hz.
  double air;
  std::uint32_t seed;
};

constexpr std::array<Flight, kSwings> kFlights{{{1.10, 0.50, 0.16, 0.20, 850.0, 0x51A60001U},
                                                {0.95, 0.45, 0.20, 0.15, 1000.0, 0x51A60002U},
                                                {0.85, 0.55, 0.24, 0.13, 1150.0, 0x51A60003U},
                                                {0.75, 0.42, 0.28, 0.10, 1300.0, 0x51A60004U},
                                                {0.65, 0.50, 0.32, 0.08, 1500.0, 0x51A60005U},
                                                {0.55, 0.45, 0.36, 0.06, 1750.0, 0x51A60006U}}};

}  // namespace

Sound Swing(int number) {
  const Flight& flight = kFlights.at(static_cast<std::size_t>(number - 1));
  Sound sound(SamplesIn(flight.seconds));
  HumVoice voice(48, 14.0);
  Noise noise(flight.seed);
  StateVariableFilter rush;
  StateVariableFilter whistle;
  for (std::size_t i = 0; i < sound.size(); ++i) {
    const double time = static_cast<double>(i) / kSampleRate;
    const double way = (time - flight.nearest * flight.seconds) / flight.passing;
    // A straight line past the ear: towards it the pitch is up, away from it down, and it is loudest beside it.
    const double speed = -way / std::sqrt(1.0 + way * way);
    const double nearness = 1.0 / (1.0 + way * way);
    const double bend = 1.08 + flight.bend * speed;
    const double in = noise.Next();
    const double centre = flight.air * bend * (0.45 + 0.9 * nearness);
    const double air = rush.Process(in, centre, 1.6).band + 0.35 * whistle.Process(in, 2.7 * centre, 5.0).band;
    sound[i] = (0.18 + 0.82 * nearness) * voice.Next(bend) + 2.6 * nearness * air;
  }
  return sound;
}

}  // namespace kestrin::demo
