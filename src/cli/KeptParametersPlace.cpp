#include "cli/KeptParametersPlace.h"

#include "cli/CommandFailure.h"
#include "platform/desktop/DataFolder.h"

namespace kestrin::cli {

motion::KeptParametersFolder OpenKeptParameters() {
  const std::filesystem::path folder = desktop::DataFolder();
  if (folder.empty())
    throw CommandFailure(
        ExitCode::Failed,
        "The folder for your data is not known, and the board's detection parameters must be kept there. "
        "Set the environment variable HOME and try again.");
  return motion::KeptParametersFolder(folder / motion::KeptParametersFolder::kFolderName);
}

}  // namespace kestrin::cli
