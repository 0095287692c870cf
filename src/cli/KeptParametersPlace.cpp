#include "cli/KeptParametersPlace.h"

#include "platform/desktop/DataFolder.h"

namespace kestrin::cli {

motion::KeptParametersFolder OpenKeptParameters(base::Disk& disk) {
  const std::filesystem::path folder = desktop::DataFolder();
  return motion::KeptParametersFolder(folder.empty() ? folder : folder / motion::KeptParametersFolder::kFolderName,
                                      disk);
}

}  // namespace kestrin::cli
