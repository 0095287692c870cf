// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kestrin::core::sound {

/// How much of a sound it takes to join its ends.
struct LoopNeed {
  /// Samples from the beginning on that fade into each other.
  std::size_t fade = 0;
  /// Samples at the end within which the best place for the end is looked for.
  std::size_t search = 0;
};

/// For a sound of that many samples; nothing when it is too short to be joined: under 20 ms.
[[nodiscard]] std::optional<LoopNeed> NeedOfLoop(std::uint64_t samples);

/// What makes a sound repeat without a click.
struct LoopJoin {
  /// The samples that the sound now begins with, in place of as many.
  std::vector<double> beginning;
  /// How many samples go off the end.
  std::size_t off = 0;
};

/// Lets the end of a sound fade over into its beginning. The end is cut where it resembles the beginning most, and the
/// fade is as loud as both, whether they are alike or not. `head`: the first `fade` samples; `tail`: the last `fade`
/// and `search` ones.
[[nodiscard]] LoopJoin JoinLoop(std::span<const double> head, std::span<const double> tail);

}  // namespace kestrin::core::sound
