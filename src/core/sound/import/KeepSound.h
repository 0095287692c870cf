// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "base/Disk.h"
#include "base/Result.h"

namespace kestrin::core::sound {

/// Puts a whole copy of the file `made` into the folder, which is there, under its own name. Nothing is ever
/// overwritten: behind the name comes a number where something has it. Returns where the copy is; the text of a failure
/// names it and says what is wrong, and then nothing is left there.
[[nodiscard]] base::Result<std::filesystem::path> KeepSound(const std::filesystem::path& made,
                                                            const std::filesystem::path& folder, base::Disk& disk);

}  // namespace kestrin::core::sound
