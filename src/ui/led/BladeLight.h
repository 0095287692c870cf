// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <array>

#include "core/led/Color.h"
#include "core/led/LED_Driver.h"

namespace kestrin::ui::led {

/// One level, 0 .. 255, for each channel.
using Levels = std::array<double, core::led::LED_Driver::kChannels>;

/// The light of a blade as a picture of it shows it.
struct BladeLight {
  /// The colour at full brightness; black when the blade is off.
  QColor hue = Qt::black;
  /// How bright it looks, from 0 (off) to 1 (a channel at full level).
  double brightness = 0;

  /// The colour on a black ground.
  [[nodiscard]] QColor OnBlack() const;

  friend bool operator==(const BladeLight&, const BladeLight&) = default;
};

/// The light that the channels of an LED type give together. Levels count as shares of each channel's luminance, so
/// channels at the same luminance weigh the same; levels outside 0 .. 255 count as the nearest end.
[[nodiscard]] BladeLight Mix(const core::led::LED_Driver& driver, const Levels& levels);

/// A colour value as Qt has it.
[[nodiscard]] QColor ToQColor(core::led::Color color);

/// What people call the colour of a channel: "red"; "not used" for 0.
[[nodiscard]] QString NameOf(core::led::Color color);

}  // namespace kestrin::ui::led
