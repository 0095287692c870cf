// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "motion/SensorReading.h"

namespace kestrin::core::motion {

/// Something that was done with the saber.
struct Movement {
  enum class Kind {
    Swing,  ///< through the air: the force grows and shrinks again
    Tap,    ///< against something: the force is there from one reading to the next
  };

  Kind kind = Kind::Swing;
  /// The strongest force of it, and when that was.
  std::int32_t peak = 0;
  std::chrono::milliseconds at{};

  friend bool operator==(const Movement&, const Movement&) = default;
};

/// Finds swings and taps in what a sensor tells 25 times a second.
class MovementFinder {
 public:
  /// Less force is the trembling of a hand.
  static constexpr std::int32_t kFloor = 5;
  /// So many readings of less force end a tap, whose shaking is over soon.
  static constexpr int kQuietAfterTap = 3;
  /// And so many a swing, which is felt twice: when it begins and when it ends.
  static constexpr int kQuietAfterSwing = 8;

  /// Takes the next change; the movement that has ended by it, if one has.
  std::optional<Movement> Take(const SensorChange& change, std::chrono::milliseconds at);

 private:
  /// The kind of what is under way, as far as it has come.
  [[nodiscard]] Movement::Kind Kind() const;

  std::optional<Movement> m_underWay;
  std::int32_t m_lastForce = 0;
  /// The most that the force has grown from one reading to the next.
  std::int32_t m_steepest = 0;
  int m_quiet = 0;
};

}  // namespace kestrin::core::motion
