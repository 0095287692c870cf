// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>

namespace kestrin::core::update {

/// The fonts folder in the first of the folders (program folder, the person's own) in which fonts can be written; it is
/// made. When there is none, the one in the last folder: writing there then says why it failed. `folders` is not empty.
[[nodiscard]] std::filesystem::path FontsPlaceIn(std::span<const std::filesystem::path> folders);

}  // namespace kestrin::core::update
