// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sound/SlotKind.h"

namespace kestrin::core::sound {

/// A sound that is about to go into a slot.
struct ComingSound {
  /// As the person knows it; an ending is left out in what is said.
  std::string name;
  SlotKind slot;
  std::int64_t samples = 0;
};

/// What to do so that sounds fit into a board's memory.
struct FitAdvice {
  /// Samples beyond what the board holds, 0 when all fit.
  std::int64_t excess = 0;
  /// The sounds that may be left out, by their numbers in rising order: enough, and none that need not be. Empty when
  /// all fit, and when leaving out is no help.
  std::vector<std::size_t> leaveOut;
  /// What to do, for the person; "" when all fit.
  std::string text;

  /// Advice for sounds in the order in which they come, beside so many samples that are in the set and stay. Lists lose
  /// their last sounds and keep their first one; a sound that has a slot for itself is shortened.
  [[nodiscard]] static FitAdvice For(const std::vector<ComingSound>& coming, std::int64_t staying,
                                     std::int64_t capacity);
};

}  // namespace kestrin::core::sound
