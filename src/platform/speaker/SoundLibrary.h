// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kestrin::platform::speaker {

/// Name and version of the library that sounds are played with: "libpulse 16.1"; "" where the system itself plays, or
/// where the library is not on this computer.
[[nodiscard]] std::string SoundLibrary();

}  // namespace kestrin::platform::speaker
