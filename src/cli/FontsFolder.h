#pragma once

#include <filesystem>

#include "cli/GlobalOptions.h"

namespace kestrin::cli {

/// The folder of the sound fonts: beside the program or, where that cannot be written, among what is this person's own.
/// Who names a program folder gets the one in it. Throws CommandFailure when the system names no folder at all.
[[nodiscard]] std::filesystem::path FontsFolder(const GlobalOptions& options);

}  // namespace kestrin::cli
