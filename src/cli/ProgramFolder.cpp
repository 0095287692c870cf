// SPDX-License-Identifier: MIT
#include "cli/ProgramFolder.h"

#include "cli/CommandFailure.h"
#include "core/base/PathText.h"
#include "platform/desktop/ExecutableFolder.h"
#include "platform/desktop/ProgramFolder.h"

namespace kestrin::cli {

std::filesystem::path ProgramFolder(const GlobalOptions& options) {
  if (!options.programFolder.empty()) return core::base::PathOf(options.programFolder);
  std::filesystem::path folder = platform::desktop::ProgramFolderOf(platform::desktop::ExecutableFolder());
  if (folder.empty())
    throw CommandFailure(ExitCode::Failed,
                         "The system does not say where this program stands. Name its folder with --program-folder.");
  return folder;
}

}  // namespace kestrin::cli
