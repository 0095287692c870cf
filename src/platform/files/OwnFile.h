// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace kestrin::platform::files {

/// Whether the path is an ordinary file, no link to one, that belongs to this person. On Windows, where what a person
/// can see in a folder of theirs is theirs, the owner does not count.
[[nodiscard]] bool IsOwnFile(const std::filesystem::path& path);

}  // namespace kestrin::platform::files
