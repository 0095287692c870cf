// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>

#include "base/Result.h"

namespace kestrin::core::base {

/// Gives the file `made`, which is complete and closed, the name `name` in the same folder, in place of a file of that
/// name. Where the system leaves a file alone that a program has open, this is tried again for a quarter of a second;
/// then the failure is InUse and says so. `wait` is what waits between two attempts: by default the thread sleeps.
[[nodiscard]] Result<> TakeName(const std::filesystem::path& made, const std::filesystem::path& name,
                                const std::function<void(std::chrono::milliseconds)>& wait = nullptr);

}  // namespace kestrin::core::base
