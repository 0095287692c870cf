// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <vector>

#include "cli/GlobalOptions.h"

namespace kestrin::cli {

/// Every folder in which sound fonts may lie, whether it is there or not: beside the program, and among what is this
/// person's own. Makes and tries nothing. Throws like FontsFolder().
[[nodiscard]] std::vector<std::filesystem::path> FontsFolders(const GlobalOptions& options);

/// The folder into which sound fonts are fetched: beside the program or, where that cannot be written or belongs to
/// whoever installed it, among what is this person's own. Who names a program folder gets the one in it. It is made.
/// Throws CommandFailure when the system names no folder at all.
[[nodiscard]] std::filesystem::path FontsFolder(const GlobalOptions& options);

}  // namespace kestrin::cli
