// SPDX-License-Identifier: MIT
#include "platform/desktop/ProgramFolder.h"

#include <system_error>

#include "core/led/LedCatalogue.h"

namespace kestrin::platform::desktop {

namespace fs = std::filesystem;

namespace {

/// Where the data is installed, seen from the programs; the install rules use the same words. Relative, so that a tree
/// can be moved.
fs::path InstalledDataOf(const fs::path& executableFolder) {
  return (executableFolder / KESTRIN_DATA_FROM_PROGRAMS).lexically_normal();
}

bool HasData(const fs::path& folder) {
  std::error_code ignored;
  return fs::exists(folder / core::led::LedCatalogue::kFileName, ignored);
}

bool AreSame(const fs::path& one, const fs::path& other) {
  std::error_code ignored;
  return one == other || fs::equivalent(one, other, ignored);
}

}  // namespace

fs::path ProgramFolderOf(const fs::path& executableFolder) {
  if (executableFolder.empty() || HasData(executableFolder)) return executableFolder;
  const fs::path installed = InstalledDataOf(executableFolder);
  return HasData(installed) ? installed : executableFolder;
}

std::vector<fs::path> FoldersToWriteIn(const fs::path& programFolder, const fs::path& executableFolder,
                                       const fs::path& dataFolder) {
  if (dataFolder.empty()) return {programFolder};
  const bool isApart = !AreSame(programFolder, executableFolder) && !executableFolder.empty() &&
                       AreSame(programFolder, InstalledDataOf(executableFolder));
  if (isApart) return {dataFolder};
  return {programFolder, dataFolder};
}

}  // namespace kestrin::platform::desktop
