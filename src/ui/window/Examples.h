// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace kestrin::ui::window {

/// Where an installed program has sets to try, given the folder with what comes with it. It need not be there.
[[nodiscard]] inline std::filesystem::path ExamplesIn(const std::filesystem::path& programFolder) {
  return programFolder / "Examples";
}

/// The set to try first. It need not be there either.
[[nodiscard]] inline std::filesystem::path ExampleIn(const std::filesystem::path& programFolder) {
  return ExamplesIn(programFolder) / "demo.lscfg";
}

}  // namespace kestrin::ui::window
