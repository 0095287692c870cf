// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "core/base/Result.h"
#include "platform/files/RegularFile.h"

namespace kestrin::platform::archive {

/// What an archive of sounds may hold at most.
inline constexpr std::uint64_t kMostEntries = 10'000;
inline constexpr std::uint64_t kMostDirectoryBytes = 4 * 1024 * 1024;

/// Reads where a ZIP file ends, which says how many entries it has and how long its directory is: a library reads a
/// directory of any length into memory. Fails with NotValid where there is no such end, with Full where the directory
/// is too large; the text is the reason alone, with the next step.
[[nodiscard]] core::base::Result<> CheckEndRecord(const files::RegularFile& file);

}  // namespace kestrin::platform::archive
