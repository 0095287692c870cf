// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "base/Result.h"
#include "base/WholeFile.h"

namespace kestrin::core::base {

/// Writes `content` into a new file in the folder, under a name that nobody else draws, and closes it. Returns its
/// path; there is none when that failed or `content` threw. The text of a failure is the reason alone.
[[nodiscard]] Result<std::filesystem::path> WriteBeside(const std::filesystem::path& folder,
                                                        const ContentInPieces& content);

}  // namespace kestrin::core::base
