// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "sound/SoundPlace.h"
#include "sound/board/SetComparison.h"

namespace kestrin::core::sound {

/// One side of a place in a comparison.
struct ComparedSound {
  /// The file on this computer; empty for a sound of a board that this computer does not know.
  std::filesystem::path path;
  /// In percent; nothing when the sound is not known.
  std::optional<std::int16_t> volume;
  std::int32_t samples = 0;

  friend bool operator==(const ComparedSound&, const ComparedSound&) = default;
};

/// A place that one of two sets uses, or both: the set here, and another set or what a board holds.
struct ComparedPlace {
  SoundPlace place;
  std::optional<ComparedSound> here;
  std::optional<ComparedSound> there;
  /// Nothing when both are the same.
  std::optional<Differs> differs;

  friend bool operator==(const ComparedPlace&, const ComparedPlace&) = default;
};

/// All places of a comparison, in flash order.
using ComparedPlaces = std::vector<ComparedPlace>;

}  // namespace kestrin::core::sound
