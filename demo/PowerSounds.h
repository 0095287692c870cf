// SPDX-License-Identifier: MIT
#pragma once

#include "demo/Synth.h"

namespace kestrin::demo {

/// The board greets: five bell tones that rise over a soft chord.
[[nodiscard]] Sound BootChime();

/// The blade comes out: a rush of air and a voice that climbs to the hum's pitch and brightens.
[[nodiscard]] Sound PowerOn();

/// The blade goes in: the same way back, darker.
[[nodiscard]] Sound PowerOff();

}  // namespace kestrin::demo
