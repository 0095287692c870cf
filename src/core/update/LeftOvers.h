// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace kestrin::core::update {

/// Removes what an update that was ended by force left in the fonts folder and in the fonts' own folders: downloads,
/// and files that were to take another's name. What the person put there stays, links are not followed, and what cannot
/// be removed is left. For who holds the folder's lock.
void RemoveLeftOvers(const std::filesystem::path& fontsFolder);

}  // namespace kestrin::core::update
