// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kestrin::rig {

/// Seconds on the clock that stands for the machine's time since its start.
[[nodiscard]] double SecondsSinceStart();

/// One line for the suites, which wait for such lines: "SECONDS what" on standard error, written in one go so that
/// lines of several threads never mix.
void Log(const std::string& what);

}  // namespace kestrin::rig
