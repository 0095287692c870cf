// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kestrin::ui::window {

/// What the program tells of itself.
struct AboutFacts {
  struct Place {
    /// What lies there, for the person.
    std::string what;
    std::filesystem::path path;
  };

  /// Of the program: "2.2.2".
  std::string version;
  /// One line.
  std::string licence;
  /// Name and version of each: "libcurl 7.88.1". A name has no blank; one without a version does not tell it.
  std::vector<std::string> libraries;
  std::vector<Place> places;
  /// What it runs on, a line each; for the report.
  std::vector<std::string> system;
};

/// All of it as a text for somebody who helps. Lines end with "\n"; names from outside are harmless in it.
[[nodiscard]] std::string AboutReport(const AboutFacts& facts);

}  // namespace kestrin::ui::window
