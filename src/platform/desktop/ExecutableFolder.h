// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace kestrin::platform::desktop {

/// The folder of the program that is running, where its own files stand. Empty when the system does not say.
[[nodiscard]] std::filesystem::path ExecutableFolder();

}  // namespace kestrin::platform::desktop
