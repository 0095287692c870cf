// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>

namespace kestrin::core::motion {

/// The strongest reading of an axis, in either direction; the impact threshold is in the same units.
inline constexpr std::int32_t kStrongest = 31;

/// What a board's sensor told at one moment.
struct SensorReading {
  /// Since the watch began.
  std::chrono::milliseconds at{};
  /// -31 .. 31, gravity included.
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t z = 0;
  /// 0 .. 255, as the board sends it.
  std::int32_t tilt = 0;

  friend bool operator==(const SensorReading&, const SensorReading&) = default;
};

/// How far the three axes are from where they rest: what is left without gravity.
struct SensorChange {
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t z = 0;

  /// That of the axis that has gone farthest, in either direction.
  [[nodiscard]] std::int32_t Force() const { return std::max({std::abs(x), std::abs(y), std::abs(z)}); }

  friend bool operator==(const SensorChange&, const SensorChange&) = default;
};

}  // namespace kestrin::core::motion
