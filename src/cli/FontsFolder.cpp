// SPDX-License-Identifier: MIT
#include "cli/FontsFolder.h"

#include <vector>

#include "cli/ProgramFolder.h"
#include "core/update/FontFiles.h"
#include "core/update/FontsPlace.h"
#include "platform/desktop/DataFolder.h"
#include "platform/desktop/ExecutableFolder.h"
#include "platform/desktop/ProgramFolder.h"

namespace kestrin::cli {

namespace {

/// What is this person's own; who names a program folder gets that one alone.
std::filesystem::path OwnFolder(const GlobalOptions& options) {
  return options.programFolder.empty() ? platform::desktop::DataFolder() : std::filesystem::path();
}

}  // namespace

std::vector<std::filesystem::path> FontsFolders(const GlobalOptions& options) {
  std::vector<std::filesystem::path> folders{ProgramFolder(options)};
  if (const std::filesystem::path own = OwnFolder(options); !own.empty()) folders.push_back(own);
  for (std::filesystem::path& folder : folders) folder /= core::update::FontFiles::kFolderName;
  return folders;
}

std::filesystem::path FontsFolder(const GlobalOptions& options) {
  return core::update::FontsPlaceIn(platform::desktop::FoldersToWriteIn(
      ProgramFolder(options), platform::desktop::ExecutableFolder(), OwnFolder(options)));
}

}  // namespace kestrin::cli
