// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>

namespace kestrin::simulator {

/// The most that a sensor tells of an axis, in either direction.
inline constexpr std::int32_t kStrongest = 31;

/// What the acceleration sensor of a board feels at one moment.
struct SensorValues {
  /// -31 .. 31; one g is about 21.
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t z = 0;
  /// 0 .. 255.
  std::int32_t tilt = 0;

  friend bool operator==(const SensorValues&, const SensorValues&) = default;
};

/// Lying still: gravity pulls along z.
inline constexpr SensorValues kLyingStill{0, 0, 21, 0};

/// What moves a simulated board: called once for each time that the board is asked what it feels.
using SensorSource = std::function<SensorValues()>;

}  // namespace kestrin::simulator
