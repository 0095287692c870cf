// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

#include "ui/window/AboutFacts.h"

namespace kestrin::programs {

/// Where the program's things lie.
struct ProgramPlaces {
  /// Pictures, help and LED types.
  std::filesystem::path program;
  /// The person's own: settings and kept parameters.
  std::filesystem::path data;
  std::filesystem::path fonts;
};

/// What the program tells of itself, with the libraries as they are at run time.
[[nodiscard]] ui::window::AboutFacts AboutProgram(const std::string& version, const ProgramPlaces& places);

}  // namespace kestrin::programs
