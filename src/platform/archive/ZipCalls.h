// SPDX-License-Identifier: MIT
#pragma once

namespace kestrin::platform::archive {

/// Whether the library for ZIP files is on this computer. Where it is not, none of its functions may be called.
[[nodiscard]] bool IsZipLibraryThere();

}  // namespace kestrin::platform::archive
