// SPDX-License-Identifier: MIT
#include "platform/desktop/ProgramFolder.h"

#include <algorithm>
#include <cstdlib>
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

/// Whether a whole path leads through that folder, however it is spelled.
bool IsBelow(const fs::path& path, const fs::path& folder) {
  for (fs::path at = path.lexically_normal(); at.has_relative_path(); at = at.parent_path())
    if (AreSame(at, folder)) return true;
  return false;
}

}  // namespace

fs::path ProgramFolderOf(const fs::path& executableFolder) {
  if (executableFolder.empty() || HasData(executableFolder)) return executableFolder;
  const fs::path installed = InstalledDataOf(executableFolder);
  return HasData(installed) ? installed : executableFolder;
}

std::vector<fs::path> FoldersOfEverybodysPrograms() {
  std::vector<fs::path> folders;
#if defined(_WIN32)
  for (const wchar_t* const variable : {L"ProgramFiles", L"ProgramW6432"})
    if (const wchar_t* const folder = _wgetenv(variable); folder != nullptr) folders.emplace_back(folder);
#endif
  return folders;
}

std::vector<fs::path> FoldersToWriteIn(const fs::path& programFolder, const fs::path& executableFolder,
                                       const fs::path& dataFolder, const std::vector<fs::path>& everybodys) {
  if (dataFolder.empty()) return {programFolder};
  if (executableFolder.empty()) return {programFolder, dataFolder};
  // An administrator could write there as well.
  const bool isInstalled = AreSame(programFolder, executableFolder)
                               ? std::any_of(everybodys.begin(), everybodys.end(),
                                             [&](const fs::path& folder) { return IsBelow(executableFolder, folder); })
                               : AreSame(programFolder, InstalledDataOf(executableFolder));
  if (isInstalled) return {dataFolder};
  return {programFolder, dataFolder};
}

}  // namespace kestrin::platform::desktop
