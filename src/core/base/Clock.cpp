// SPDX-License-Identifier: MIT
#include "base/Clock.h"

#include <thread>

namespace kestrin::core::base {

Clock::Duration SystemClock::Now() const {
  return std::chrono::duration_cast<Duration>(std::chrono::steady_clock::now().time_since_epoch());
}

void SystemClock::Wait(Duration duration) { std::this_thread::sleep_for(duration); }

}  // namespace kestrin::core::base
