// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "sound/SlotKind.h"

namespace kestrin::core::sound {

/// How loud the sounds of the slots shall be against one another, in loudness units (LU, as large as decibels). Only
/// the differences count: sounds of a slot at -9 are heard 9 LU below those of one at 0.
class Balance {
 public:
  /// The range of a slot's value.
  static constexpr double kLowest = -24;
  static constexpr double kHighest = 24;

  /// The balance that a set gets unless the person shifts it: a hum that runs all the time stays below the swings, and
  /// everything below the hits.
  Balance();

  [[nodiscard]] double Of(SlotKind kind) const { return m_units[PlaceOf(kind)]; }
  /// A value outside the range becomes the nearest one inside.
  void Set(SlotKind kind, double units);

  friend bool operator==(const Balance&, const Balance&) = default;

 private:
  static std::size_t PlaceOf(SlotKind kind) { return static_cast<std::size_t>(&SlotOf(kind) - kSlots.data()); }

  /// In the order of kSlots.
  std::array<double, kSlots.size()> m_units{};
};

}  // namespace kestrin::core::sound
