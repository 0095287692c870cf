#include "motion/DetectionParameter.h"

#include "base/Numbers.h"

namespace kestrin::motion {

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

device::AccParam FactoryDefaults() {
  device::AccParam board;
  for (const DetectionParameter& parameter : kDetectionParameters)
    SetShownValue(parameter, board, parameter.factoryDefault);
  return board;
}

}  // namespace kestrin::motion
