// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "demo/Synth.h"

namespace kestrin::demo {

/// The loudest sample of a finished sound: 1 dB below full scale.
inline constexpr double kFinishedPeak = 29204.0;

/// The sample of a finished sound for a value from -1 to 1. There are no more of them than a board keeps apart: nobody
/// hears more there, and what is installed is half as large when it is packed.
[[nodiscard]] std::int16_t FinishedSample(double value);

/// A sound that is played once: no direct current, soft ends (`fadeIn`, `fadeOut` in seconds), loudest sample
/// kFinishedPeak. `sound` is not silent.
[[nodiscard]] std::vector<std::int16_t> Finish(Sound sound, double fadeIn, double fadeOut);

/// A sound that is played round and round: `sound` is one whole turn, so that its first sample follows its last one. It
/// is turned until both are next to zero: a board plays silence in the place of these two. The length is even.
[[nodiscard]] std::vector<std::int16_t> FinishLoop(Sound sound);

}  // namespace kestrin::demo
