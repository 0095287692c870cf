// SPDX-License-Identifier: MIT
#include "motion/ThresholdAdvice.h"

#include <algorithm>

namespace kestrin::core::motion {

ThresholdAdvice ThresholdAdvice::Of(const SwingTapTrial& trial) {
  if (trial.Taps().empty()) return {};
  const std::int32_t swing = *std::ranges::max_element(trial.Swings());
  const std::int32_t tap = *std::ranges::min_element(trial.Taps());
  const std::string hardest = "hardest swing (" + std::to_string(swing) + ")";
  const std::string softest = "softest tap (" + std::to_string(tap) + ")";
  // Forces are whole numbers: between 8 and 9 there is none.
  if (tap - swing < 2)
    return {std::nullopt, "No suggestion: swings and taps are too much alike.",
            "Your " + hardest + " leaves no room below your " + softest +
                ". Start again: swing more gently, or tap harder."};
  const std::int32_t threshold = (swing + tap) / 2;
  return {threshold,
          std::string(trial.Turn() ? "Suggestion so far" : "Suggestion") + ": impact threshold " +
              std::to_string(threshold) + ".",
          "Between your " + hardest + " and your " + softest + "."};
}

}  // namespace kestrin::core::motion
