// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "base/Result.h"

namespace kestrin::core::base {

/// Gives the file `made`, which is complete and closed, the name `name` in the same folder, in place of a file of that
/// name. Where the system leaves a file alone that a program has open, the failure is InUse and says so.
[[nodiscard]] Result<> TakeName(const std::filesystem::path& made, const std::filesystem::path& name);

}  // namespace kestrin::core::base
