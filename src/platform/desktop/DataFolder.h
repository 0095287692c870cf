// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace kestrin::platform::desktop {

/// The folder for what the program keeps for this person between runs; nothing is created. Empty when the system does
/// not say where the person's folders are.
///
/// Linux: "kestrin" in `XDG_DATA_HOME` (when that is an absolute path, else in "~/.local/share").
/// macOS: "~/Library/Application Support/kestrin". Windows: "%APPDATA%\kestrin".
[[nodiscard]] std::filesystem::path DataFolder();

}  // namespace kestrin::platform::desktop
