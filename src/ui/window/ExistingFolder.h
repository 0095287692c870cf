// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <system_error>

namespace kestrin::ui::window {

/// `path` when it is a folder, else the nearest folder above it that exists; empty when there is none.
[[nodiscard]] inline std::filesystem::path ExistingFolder(std::filesystem::path path) {
  std::error_code ignored;
  while (!path.empty() && !std::filesystem::is_directory(path, ignored))
    path = path.has_relative_path() ? path.parent_path() : std::filesystem::path();
  return path;
}

}  // namespace kestrin::ui::window
