#include "cli/FontsFolder.h"

#include <vector>

#include "cli/ProgramFolder.h"
#include "platform/desktop/DataFolder.h"
#include "update/UpdateUtils.h"

namespace kestrin::cli {

std::filesystem::path FontsFolder(const GlobalOptions& options) {
  std::vector<std::filesystem::path> places{ProgramFolder(options)};
  const std::filesystem::path own = desktop::DataFolder();
  if (options.programFolder.empty() && !own.empty()) places.push_back(own);
  return update::UpdateUtils::PlaceIn(places);
}

}  // namespace kestrin::cli
