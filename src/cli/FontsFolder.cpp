// SPDX-License-Identifier: MIT
#include "cli/FontsFolder.h"

#include <vector>

#include "cli/ProgramFolder.h"
#include "core/update/FontFiles.h"
#include "core/update/FontsPlace.h"
#include "platform/desktop/DataFolder.h"

namespace kestrin::cli {

namespace {

std::vector<std::filesystem::path> Places(const GlobalOptions& options) {
  std::vector<std::filesystem::path> places{ProgramFolder(options)};
  const std::filesystem::path own = platform::desktop::DataFolder();
  if (options.programFolder.empty() && !own.empty()) places.push_back(own);
  return places;
}

}  // namespace

std::vector<std::filesystem::path> FontsFolders(const GlobalOptions& options) {
  std::vector<std::filesystem::path> folders = Places(options);
  for (std::filesystem::path& folder : folders) folder /= core::update::FontFiles::kFolderName;
  return folders;
}

std::filesystem::path FontsFolder(const GlobalOptions& options) { return core::update::FontsPlaceIn(Places(options)); }

}  // namespace kestrin::cli
