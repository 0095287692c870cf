// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <vector>

namespace kestrin::ui::window {

/// The files of the sets that this computer knows, whether they are there or not: the `recent` ones, and the sound
/// fonts that are complete below the folders in which fonts may lie.
[[nodiscard]] std::vector<std::filesystem::path> SetsOfComputer(const std::vector<std::filesystem::path>& recent,
                                                                const std::vector<std::filesystem::path>& places);

}  // namespace kestrin::ui::window
