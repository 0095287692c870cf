// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "device/TLS.h"

namespace kestrin::core::motion {

/// What is fixed about one of the six detection parameters. Ranges and factory value are in the units that people see:
/// milliseconds for `FOCTime`, the board's own units for the others.
struct DetectionParameter {
  std::string_view name;
  /// The caption beside its slider, and the group it stands in.
  std::string_view caption;
  std::string_view group;
  std::int32_t minimum;
  std::int32_t maximum;
  std::int32_t step;
  std::int32_t factoryDefault;
  /// Where the board's value of it is kept.
  std::int32_t device::AccParam::*field;
};

/// All six in command order.
inline constexpr std::array<DetectionParameter, 6> kDetectionParameters{{
    {"MotionTh", "Threshold", "MOTION DETECTION PARAMETERS", 1, 255, 1, 180, &device::AccParam::MotionTh},
    {"MotionDeb", "Integration Time", "MOTION DETECTION PARAMETERS", 2, 25, 1, 2, &device::AccParam::MotionDeb},
    {"ImpactTh", "Threshold", "IMPACT DETECTION PARAMETERS", 0, 31, 1, 10, &device::AccParam::ImpactTh},
    {"ImpactDeb", "Debouncing Time", "IMPACT DETECTION PARAMETERS", 1, 255, 1, 50, &device::AccParam::ImpactDeb},
    {"ImpactTm", "Minimum time between repetitions", "IMPACT DETECTION PARAMETERS", 1, 255, 1, 125,
     &device::AccParam::ImpactTm},
    {"FOCTime", "Flash period [ms]", "LOCKUP FLASH TIMING", 20, 1000, 4, 52, &device::AccParam::FOCTime},
}};

/// The first `DeviceRevision` whose boards have a flash period.
inline constexpr std::uint16_t kFlashPeriodRevision = 293;
/// Whether boards of that `DeviceRevision` have a flash period that can be set.
[[nodiscard]] constexpr bool HasFlashPeriod(std::uint16_t revision) { return revision >= kFlashPeriodRevision; }

/// The board's units (of 4 ms) for a flash period in milliseconds: the nearest, ties to the even one.
[[nodiscard]] std::int32_t FlashPeriodUnits(std::int32_t milliseconds);
/// The flash period in milliseconds that the board's units stand for.
[[nodiscard]] std::int32_t FlashPeriodMilliseconds(std::int32_t units);

/// A parameter's value as people see it, out of what the board holds, and the other way round.
[[nodiscard]] std::int32_t ShownValue(const DetectionParameter& parameter, const device::AccParam& board);
void SetShownValue(const DetectionParameter& parameter, device::AccParam& board, std::int32_t value);

/// The nearest value that the parameter's range has to what a board holds, in the board's units.
[[nodiscard]] std::int32_t NearestInRange(const DetectionParameter& parameter, std::int32_t boardValue);

/// What a board of that `DeviceRevision` holds as its sliders show it, in the board's units: each value the nearest in
/// range, the flash period that of the factory where there is none.
[[nodiscard]] device::AccParam InRange(const device::AccParam& held, std::uint16_t revision);

/// Whether `held` is what becomes of `wanted` on its way through a slider or into a board of that `DeviceRevision`:
/// the same values, or the nearest in range where `wanted` is outside. The flash period counts only where there is one.
[[nodiscard]] bool IsFormOf(const device::AccParam& held, const device::AccParam& wanted, std::uint16_t revision);

/// The factory values as the board holds them.
[[nodiscard]] device::AccParam FactoryDefaults();

}  // namespace kestrin::core::motion
