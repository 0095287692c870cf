// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "core/base/Archives.h"

namespace kestrin::platform::archive {

/// Writes an archive of the items into the file `made`, which is there and empty. The text of a failure is the reason
/// alone. What `pump` throws ends the writing and is thrown on.
[[nodiscard]] core::base::Result<> WriteZip(const std::filesystem::path& made,
                                            const std::vector<core::base::ArchiveItem>& items,
                                            const std::function<void()>& pump);

}  // namespace kestrin::platform::archive
