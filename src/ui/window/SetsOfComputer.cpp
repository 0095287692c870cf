// SPDX-License-Identifier: MIT
#include "ui/window/SetsOfComputer.h"

#include <algorithm>

#include "core/base/PathText.h"
#include "core/update/FontFiles.h"
#include "core/update/StoredFonts.h"

namespace kestrin::ui::window {

namespace fs = std::filesystem;
using core::update::FontFiles;

std::vector<fs::path> SetsOfComputer(const std::vector<fs::path>& recent, const std::vector<fs::path>& places) {
  std::vector<fs::path> sets = recent;
  for (const fs::path& place : places) {
    const fs::path fonts = place / FontFiles::kFolderName;
    for (const core::update::StoredFont& font : core::update::StoredFonts(fonts)) {
      const fs::path name = core::base::PathOf(font.name);
      fs::path file = fonts / name / name;
      file += FontFiles::kConfigurationEnding;
      if (font.complete && std::ranges::find(sets, file) == sets.end()) sets.push_back(file);
    }
  }
  return sets;
}

}  // namespace kestrin::ui::window
