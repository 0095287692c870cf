// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <span>

namespace kestrin::core::base {

/// The first of the folders for which `takes` is true: it tries to write there what is to be written. Missing folders
/// are made before, empty names skipped. Empty when there is none.
///
/// The program's own files go into the program folder where that can be written, else into the person's own data
/// folder; this is how that is decided.
[[nodiscard]] std::filesystem::path FirstThatTakes(std::span<const std::filesystem::path> folders,
                                                   const std::function<bool(const std::filesystem::path&)>& takes);

}  // namespace kestrin::core::base
