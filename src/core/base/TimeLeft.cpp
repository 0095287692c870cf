// SPDX-License-Identifier: MIT
#include "base/TimeLeft.h"

namespace kestrin::core::base {

std::optional<long long> SecondsLeft(Clock::Duration elapsed, int percent) {
  using std::chrono::seconds;
  if (percent <= 0 || percent >= 100 || elapsed < seconds(1)) return std::nullopt;
  return std::chrono::duration_cast<seconds>(elapsed * (100 - percent) / percent).count();
}

std::string MinutesAndSeconds(long long seconds) {
  const std::string inMinute = std::to_string(seconds % 60);
  return std::to_string(seconds / 60) + ":" + (inMinute.size() < 2 ? "0" : "") + inMinute;
}

}  // namespace kestrin::core::base
