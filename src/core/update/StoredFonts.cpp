// SPDX-License-Identifier: MIT
#include "update/StoredFonts.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "base/PathText.h"
#include "update/FileSteps.h"
#include "update/FontFiles.h"
#include "update/UpdateUtils.h"

namespace kestrin::core::update {

namespace fs = std::filesystem;

std::vector<StoredFont> StoredFonts(const fs::path& fontsFolder) {
  std::vector<StoredFont> fonts;
  std::error_code error;
  for (fs::directory_iterator entry(fontsFolder, error), end; !error && entry != end; entry.increment(error)) {
    std::error_code unknown;
    if (!entry->is_directory(unknown)) continue;
    StoredFont font{base::TextOf(entry->path().filename()), false, {}};
    font.complete = IsFile(entry->path() / FontFiles::kCompleteMarker);
    for (fs::directory_iterator file(entry->path(), unknown); !unknown && file != end; file.increment(unknown)) {
      const std::string name = base::TextOf(file->path().filename());
      if (UpdateUtils::NamesSound(name) && IsFile(file->path())) font.files.push_back(name);
    }
    std::sort(font.files.begin(), font.files.end());
    fonts.push_back(std::move(font));
  }
  std::sort(fonts.begin(), fonts.end(), [](const StoredFont& a, const StoredFont& b) { return a.name < b.name; });
  return fonts;
}

}  // namespace kestrin::core::update
