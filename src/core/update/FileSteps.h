// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <system_error>

#include "base/Result.h"

namespace kestrin::core::update {

// Steps on the disk. The text of a failure names the file and says what is wrong, as half a sentence to which
// DiskAdvice() adds what to do.

/// Whether a file of that name is there, or a link to one.
[[nodiscard]] bool IsFile(const std::filesystem::path& path);

/// Makes a folder and those above it; one that is there will do.
base::Result<> MakeFolder(const std::filesystem::path& folder);

/// Removes a file, or of a link the link itself; nothing of that name will do.
base::Result<> RemoveFile(const std::filesystem::path& path);

/// That a file could not be written, and why.
[[nodiscard]] base::Failure CouldNotWrite(const std::filesystem::path& path, const base::Failure& why);

}  // namespace kestrin::core::update
