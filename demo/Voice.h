// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace kestrin::demo {

/// How a whole set is made to sound like another saber.
struct Voice {
  /// How many times as high, and as quick.
  double pitch;
  /// How rough: from 0, as it was, to 1, growling.
  double growl;
};

/// A finished sound in another voice, as loud at its peak as before. What `loops` still does: behind the last sample
/// comes the first. The length stays even.
[[nodiscard]] std::vector<std::int16_t> InVoice(std::span<const std::int16_t> samples, bool loops, const Voice& voice);

}  // namespace kestrin::demo
