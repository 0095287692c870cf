// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "sound/import/LoudnessMeter.h"

namespace kestrin::core::sound {

/// How much louder or quieter a sound is made.
struct Gain {
  double decibels = 0;
  /// Whether it is less than was asked for, because the sound's peaks, or what is sensible, do not allow more.
  bool isLimited = false;

  /// What samples are multiplied by.
  [[nodiscard]] double Factor() const;
};

/// Chooses the gain that brings a sound to `level` LUFS, by at most 12 dB in either direction, none below -60 LUFS; in
/// any case its true peak to at most -1 dB. `isExact`: the samples are 16 bits as they are, so that without a gain
/// nothing is added to them.
[[nodiscard]] Gain ChooseGain(const Loudness& loudness, std::optional<double> level, bool isExact);

}  // namespace kestrin::core::sound
