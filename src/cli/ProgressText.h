// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace kestrin::cli {

/// How far a phase of long work has come.
struct Progress {
  std::string phase;
  /// 0 .. 100; nothing when it is not known yet.
  std::optional<int> percent;
  std::optional<long long> secondsLeft;
};

/// The progress as one line that a terminal of that many columns shows without breaking it: with a bar where there is
/// room for one; else without it, then without the time left, at last with as much of the phase's name as fits.
[[nodiscard]] std::string ProgressText(const Progress& progress, std::size_t columns);

}  // namespace kestrin::cli
