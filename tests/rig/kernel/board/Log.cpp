// SPDX-License-Identifier: MIT
#include "rig/kernel/board/Log.h"

#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>

namespace kestrin::rig {

double SecondsSinceStart() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void Log(const std::string& what) {
  std::array<char, 32> time{};
  std::snprintf(time.data(), time.size(), "%.3f ", SecondsSinceStart());
  const std::string line = time.data() + what + "\n";
  if (::write(STDERR_FILENO, line.data(), line.size()) < 0) {
    // Nobody reads it; the board goes on all the same.
  }
}

}  // namespace kestrin::rig
