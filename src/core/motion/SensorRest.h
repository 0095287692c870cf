// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <deque>
#include <optional>

#include "motion/SensorReading.h"

namespace kestrin::core::motion {

/// Where the axes rest: gravity pulls at them, in another direction whenever the saber is held another way. Whenever it
/// has been held still for a moment, that is where it rests from then on.
class SensorRest {
 public:
  /// So many readings, one after the other, are a moment: 0.4 s.
  static constexpr std::size_t kStillReadings = 10;
  /// Among them an axis may tremble by so much.
  static constexpr std::int32_t kTremble = 2;

  /// Takes the next reading. How far it is from where the axes rest, which may be known only by this reading; until
  /// then, how far it is from the first one.
  SensorChange Follow(const SensorReading& reading);
  /// Whether it has been held still.
  [[nodiscard]] bool IsKnown() const { return m_isKnown; }

 private:
  [[nodiscard]] bool IsStill() const;

  std::deque<SensorReading> m_last;
  std::optional<SensorReading> m_rest;
  bool m_isKnown = false;
};

}  // namespace kestrin::core::motion
