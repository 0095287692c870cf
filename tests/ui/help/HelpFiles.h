// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace kestrin::testing {

/// The whole content of a file; empty when it cannot be read.
inline std::string BytesOf(const std::filesystem::path& file) {
  std::ifstream input(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

/// The names of the pages as they lie in the source.
inline std::set<std::string> SourcePages() {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(KESTRIN_HELP_PAGES)) {
    if (entry.path().extension() == ".html") names.insert(entry.path().filename().string());
  }
  return names;
}

/// A page as it lies in the source.
inline std::string SourcePage(const std::string& name) {
  return BytesOf(std::filesystem::path(KESTRIN_HELP_PAGES) / name);
}

}  // namespace kestrin::testing
