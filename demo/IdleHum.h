// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "demo/Synth.h"

namespace kestrin::demo {

/// The pitch of the blade at rest, in Hz. Every other sound is tuned to it.
inline constexpr double kHumPitch = 92.0;

/// The blade's voice: three layers a little apart in pitch, so that they beat slowly.
class HumVoice {
 public:
  /// `harmonics` in each layer; `brightness` as in GentleHarmonics().
  HumVoice(std::size_t harmonics, double brightness) : m_amplitudes(GentleHarmonics(harmonics, brightness)) {}
  /// The next sample with the pitch bent by the factor `bend`; harmonics * kHumPitch * bend stays below 24,000.
  [[nodiscard]] double Next(double bend);

 private:
  std::vector<double> m_amplitudes;
  Oscillator m_middle{0.0};
  Oscillator m_above{0.31};
  Oscillator m_below{0.67};
};

/// The blade at rest: three seconds that go round without a seam, as all that sounds or sways in them does so a whole
/// number of times.
[[nodiscard]] Sound IdleHum();

}  // namespace kestrin::demo
