// SPDX-License-Identifier: MIT
#include "cli/KeptParametersPlace.h"

#include "platform/desktop/DataFolder.h"

namespace kestrin::cli {

core::motion::KeptParametersFolder OpenKeptParameters(core::base::Disk& disk) {
  const std::filesystem::path folder = platform::desktop::DataFolder();
  return core::motion::KeptParametersFolder(
      folder.empty() ? folder : folder / core::motion::KeptParametersFolder::kFolderName, disk);
}

}  // namespace kestrin::cli
