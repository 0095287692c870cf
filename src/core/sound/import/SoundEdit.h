// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "sound/import/SoundBounds.h"

namespace kestrin::core::sound {

/// What is done to the samples of a sound, but for its level.
struct SoundEdit {
  /// 5 ms.
  static constexpr std::uint64_t kFade = 240;

  /// What stays.
  Stretch kept;
  /// Whether the sound comes up, or goes down, within kFade: where a cut would click.
  bool fadesIn = false;
  bool fadesOut = false;
  /// What the kept samples begin with, in place of as many.
  std::vector<double> beginning = {};

  /// Whether it changes samples, other than leaving some out.
  [[nodiscard]] bool ChangesSamples() const { return fadesIn || fadesOut || !beginning.empty(); }
  /// Applies it to a block of samples; `first` is the place of the first of them among the kept ones.
  void Apply(std::uint64_t first, std::span<double> block) const;
};

}  // namespace kestrin::core::sound
