// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "motion/SwingTapTrial.h"

namespace kestrin::core::motion {

/// Which impact threshold a trial speaks for: one that no swing reaches and every tap goes beyond.
struct ThresholdAdvice {
  /// Half-way between the hardest swing and the softest tap, cut off; empty when there is nothing between them, and as
  /// long as there are no taps.
  std::optional<std::int32_t> threshold;
  /// For the person; both are "" as long as there are no taps. With no threshold they say what to do.
  std::string headline;
  std::string text;

  /// What can be said so far.
  [[nodiscard]] static ThresholdAdvice Of(const SwingTapTrial& trial);

  friend bool operator==(const ThresholdAdvice&, const ThresholdAdvice&) = default;
};

}  // namespace kestrin::core::motion
