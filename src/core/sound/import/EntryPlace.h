// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "base/Archives.h"

namespace kestrin::core::sound {

/// Where a file stands in an archive, folders and name with "/" between, whichever separators the archive has; neither
/// drives nor roots nor ".." are left in it. It is no path to use. "" for folders, and for what systems hide: names
/// that begin with a dot, and the folder "__MACOSX".
[[nodiscard]] std::string PlaceOf(const base::ArchiveEntry& entry);

/// Whether people do not see a file or folder of that name.
[[nodiscard]] bool IsHiddenName(std::string_view name);

}  // namespace kestrin::core::sound
