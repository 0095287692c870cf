// SPDX-License-Identifier: MIT
#include "update/FontsPlace.h"

#include <string>

#include "base/FirstThatTakes.h"
#include "base/NewFile.h"
#include "update/FileSteps.h"
#include "update/FontFiles.h"

namespace kestrin::core::update {

namespace fs = std::filesystem;

namespace {

bool TakesFonts(const fs::path& place) {
  const fs::path folder = place / FontFiles::kFolderName;
  if (!MakeFolder(folder)) return false;
  // No font can have such a name. What is there already is the person's, or another program's own trial.
  const std::string name = FontFiles::kTrial;
  fs::path trial = folder / name;
  for (int number = 2;; ++number) {
    base::NewFile file(trial);
    if (file.IsOpen()) return file.Close() && RemoveFile(trial);
    // A full disk is still the place where the fonts are: elsewhere all of them would be fetched again.
    if (!file.WasThere()) return file.Why().kind == base::FailureKind::DiskFull;
    trial = folder / (name + std::to_string(number));
  }
}

}  // namespace

fs::path FontsPlaceIn(std::span<const fs::path> folders) {
  const fs::path place = base::FirstThatTakes(folders, TakesFonts);
  return (place.empty() ? folders.back() : place) / FontFiles::kFolderName;
}

}  // namespace kestrin::core::update
