// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kestrin::platform::desktop {

/// Name and version of the library that sounds are played with: "libpulse 16.1"; "" where the system itself plays.
[[nodiscard]] std::string SoundLibrary();

}  // namespace kestrin::platform::desktop
