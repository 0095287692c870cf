// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "cli/GlobalOptions.h"

namespace kestrin::cli {

/// The folder with pictures, help file, LED catalogue and fonts: the one that `--program-folder` names, else the one
/// that belongs to this program. Throws CommandFailure when the system does not say where that is.
[[nodiscard]] std::filesystem::path ProgramFolder(const GlobalOptions& options);

}  // namespace kestrin::cli
