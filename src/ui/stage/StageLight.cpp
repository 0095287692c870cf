// SPDX-License-Identifier: MIT
#include "ui/stage/StageLight.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "ui/led/BladeLight.h"

namespace kestrin::ui::stage {

namespace {

/// How much the light shimmers, and how often a second, in two waves that never meet the same way.
constexpr double kShimmer = 0.045;
constexpr double kShimmerTurns = 2.3;
constexpr double kShimmerOtherTurns = 3.7;

led::Levels Between(const core::led::PulseContent& pulse, double share) {
  led::Levels levels{};
  for (std::size_t i = 0; i < levels.size(); ++i) levels[i] = pulse.low[i] + (pulse.high[i] - pulse.low[i]) * share;
  return levels;
}

}  // namespace

void StageLight::SetLed(std::optional<LedLook> look) {
  m_flashHue = Qt::white;
  m_look.reset();
  if (!look) return;
  const core::led::PulseContent& idle = look->pulses[core::led::kIdlePulse];
  const bool isLow = led::Mix(look->driver, Between(idle, 0)).brightness > 0;
  // Pulses that nobody has set yet shine in no colour at all.
  if (!isLow && led::Mix(look->driver, Between(idle, 1)).brightness <= 0) return;
  m_look = std::move(look);
  m_still = isLow ? 0 : 1;
  m_pulse = led::PulseShape::Idle(m_look->pulses[core::led::kIdlePulse]);
  const led::BladeLight flash = led::Mix(m_look->driver, Between(m_look->pulses[core::led::kFocPulse], 1));
  if (flash.brightness > 0) m_flashHue = flash.hue;
}

void StageLight::SetFewer(bool fewer) {
  m_fewer = fewer;
  m_flash.SetFewer(fewer);
}

Shine StageLight::At(double now, double extent) {
  Shine shine;
  shine.hue = QColor(kOwnHue);
  shine.extent = extent;
  if (m_look) {
    const bool isSteady = m_fewer && m_pulse.Length() < BladeFlash::kApart;
    const double share = m_pulse.Length() <= 0 ? m_still : m_pulse.ShareAt(std::fmod(now, m_pulse.Length()));
    const led::BladeLight light =
        led::Mix(m_look->driver, Between(m_look->pulses[core::led::kIdlePulse], isSteady ? 1 : share));
    // A pulse that goes down to nothing leaves the tube as it is: dark, in no colour.
    if (light.brightness > 0) shine.hue = light.hue;
    shine.brightness = light.brightness;
  }
  shine.flash = m_flash.At(now);
  shine.flashHue = m_flashHue;
  const double seconds = now / 1000;
  shine.shimmer = 1 + kShimmer *
                          (std::sin(2 * std::numbers::pi * kShimmerTurns * seconds) +
                           std::sin(2 * std::numbers::pi * kShimmerOtherTurns * seconds)) /
                          2;
  return shine;
}

}  // namespace kestrin::ui::stage
