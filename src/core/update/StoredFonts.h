// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kestrin::core::update {

/// A font on disk.
struct StoredFont {
  std::string name;
  /// Whether every sound of it is there.
  bool complete = false;
  /// Names of its sound files, sorted.
  std::vector<std::string> files;
};

/// All fonts in a fonts folder, sorted by name; none when there is no such folder. Writes nothing.
[[nodiscard]] std::vector<StoredFont> StoredFonts(const std::filesystem::path& fontsFolder);

}  // namespace kestrin::core::update
