// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kestrin::platform::archive {

/// Name and version of the library that reads and writes ZIP files: "libzip 1.7.3"; "" where it is
/// not there.
[[nodiscard]] std::string ZipLibrary();

}  // namespace kestrin::platform::archive
