// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "core/led/LED_Driver.h"
#include "core/led/PulseContent.h"
#include "ui/led/PulseShape.h"
#include "ui/stage/BladeFlash.h"
#include "ui/stage/BladePainter.h"

namespace kestrin::ui::stage {

/// LED settings that are open.
struct LedLook {
  core::led::LED_Driver driver;
  core::led::Pulses pulses;
};

/// The light of the stage's blade: in the colour and with the pulse of the LED settings that are open, in a colour of
/// the stage's own otherwise; with flashes when it is hit and while it is locked up.
class StageLight {
 public:
  /// The blade's colour without LED settings.
  static constexpr QRgb kOwnHue = 0xff2fe6d0;

  /// `look` is empty when no LED settings are open.
  void SetLed(std::optional<LedLook> look);
  /// At most three flashes a second; pulses that are quicker shine evenly.
  void SetFewer(bool fewer);
  [[nodiscard]] BladeFlash& Flash() { return m_flash; }

  /// At a moment of the clock, in milliseconds, for a blade that is out so far.
  [[nodiscard]] Shine At(double now, double extent);

 private:
  std::optional<LedLook> m_look;
  led::PulseShape m_pulse;
  /// How a pulse without any time shines, as its share of the way from low to high.
  double m_still = 0;
  QColor m_flashHue = Qt::white;
  bool m_fewer = true;
  BladeFlash m_flash;
};

}  // namespace kestrin::ui::stage
