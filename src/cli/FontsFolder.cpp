#include "cli/FontsFolder.h"

#include <vector>

#include "cli/ProgramFolder.h"
#include "platform/desktop/DataFolder.h"
#include "update/UpdateUtils.h"

namespace kestrin::cli {

namespace {

std::vector<std::filesystem::path> Places(const GlobalOptions& options) {
  std::vector<std::filesystem::path> places{ProgramFolder(options)};
  const std::filesystem::path own = desktop::DataFolder();
  if (options.programFolder.empty() && !own.empty()) places.push_back(own);
  return places;
}

}  // namespace

std::vector<std::filesystem::path> FontsFolders(const GlobalOptions& options) {
  std::vector<std::filesystem::path> folders = Places(options);
  for (std::filesystem::path& folder : folders) folder /= update::UpdateUtils::kFolderName;
  return folders;
}

std::filesystem::path FontsFolder(const GlobalOptions& options) {
  return update::UpdateUtils::PlaceIn(Places(options));
}

}  // namespace kestrin::cli
