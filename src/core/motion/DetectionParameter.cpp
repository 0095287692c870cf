// SPDX-License-Identifier: MIT
#include "motion/DetectionParameter.h"

#include <algorithm>

#include "base/Numbers.h"

namespace kestrin::core::motion {

namespace {

constexpr std::int32_t kMillisecondsPerUnit = 4;

bool IsFlashPeriod(const DetectionParameter& parameter) { return parameter.field == &device::AccParam::FOCTime; }

}  // namespace

std::int32_t FlashPeriodUnits(std::int32_t milliseconds) {
  return static_cast<std::int32_t>(base::RoundHalfEven(milliseconds / double{kMillisecondsPerUnit}));
}

std::int32_t FlashPeriodMilliseconds(std::int32_t units) { return units * kMillisecondsPerUnit; }

std::int32_t ShownValue(const DetectionParameter& parameter, const device::AccParam& board) {
  const std::int32_t value = board.*parameter.field;
  return IsFlashPeriod(parameter) ? FlashPeriodMilliseconds(value) : value;
}

void SetShownValue(const DetectionParameter& parameter, device::AccParam& board, std::int32_t value) {
  board.*parameter.field = IsFlashPeriod(parameter) ? FlashPeriodUnits(value) : value;
}

std::int32_t NearestInRange(const DetectionParameter& parameter, std::int32_t boardValue) {
  device::AccParam board;
  const auto inUnits = [&](std::int32_t shown) {
    SetShownValue(parameter, board, shown);
    return board.*parameter.field;
  };
  return std::clamp(boardValue, inUnits(parameter.minimum), inUnits(parameter.maximum));
}

device::AccParam InRange(const device::AccParam& held, std::uint16_t revision) {
  device::AccParam shown;
  for (const DetectionParameter& parameter : kDetectionParameters) {
    if (IsFlashPeriod(parameter) && !HasFlashPeriod(revision))
      SetShownValue(parameter, shown, parameter.factoryDefault);
    else
      shown.*parameter.field = NearestInRange(parameter, held.*parameter.field);
  }
  return shown;
}

bool IsFormOf(const device::AccParam& held, const device::AccParam& wanted, std::uint16_t revision) {
  return std::all_of(kDetectionParameters.begin(), kDetectionParameters.end(),
                     [&](const DetectionParameter& parameter) {
                       if (IsFlashPeriod(parameter) && !HasFlashPeriod(revision)) return true;
                       const std::int32_t value = held.*parameter.field;
                       const std::int32_t asked = wanted.*parameter.field;
                       return value == asked || value == NearestInRange(parameter, asked);
                     });
}

device::AccParam FactoryDefaults() {
  device::AccParam board;
  for (const DetectionParameter& parameter : kDetectionParameters)
    SetShownValue(parameter, board, parameter.factoryDefault);
  return board;
}

}  // namespace kestrin::core::motion
