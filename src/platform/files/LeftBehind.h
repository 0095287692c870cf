// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace kestrin::platform::files {

/// Removes what this program left in the folder when it was ended by force: files that were to take another name once
/// they were complete. That is only what has such a name, is an ordinary file of this person's own, and has not been
/// written to for a day before `now`. Everything else stays, whatever its name: links, folders, files of somebody else.
/// What is below the folder is not looked at, and what cannot be removed is left.
void RemoveLeftBehind(const std::filesystem::path& folder,
                      std::filesystem::file_time_type now = std::filesystem::file_time_type::clock::now());

}  // namespace kestrin::platform::files
