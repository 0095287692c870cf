// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace kestrin::platform::process {

/// What an environment variable says, as UTF-8 whatever the system's code page is; nothing when it is not set. `name`
/// has letters of ASCII alone.
[[nodiscard]] std::optional<std::string> EnvironmentText(const char* name);

}  // namespace kestrin::platform::process
