// SPDX-License-Identifier: MIT
#include "doctor/TimeText.h"

#include <cstdint>

namespace kestrin::core::doctor {

std::string TimeText(std::chrono::microseconds time) {
  constexpr std::int64_t kTenth = 100;
  const std::int64_t milliseconds = (time.count() + 500) / 1000;
  if (milliseconds < 1) return "less than 1 ms";
  if (milliseconds < kTenth) return std::to_string(milliseconds) + " ms";
  const std::int64_t tenths = (milliseconds + kTenth / 2) / kTenth;
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s";
}

std::string AgeText(std::chrono::seconds age) {
  struct Unit {
    std::int64_t seconds;
    const char* name;
  };
  constexpr Unit kUnits[] = {{86400, "day"}, {3600, "hour"}, {60, "minute"}, {1, "second"}};
  for (const Unit& unit : kUnits) {
    const std::int64_t count = age.count() / unit.seconds;
    if (count > 0) return std::to_string(count) + " " + unit.name + (count > 1 ? "s" : "");
  }
  return "0 seconds";
}

}  // namespace kestrin::core::doctor
