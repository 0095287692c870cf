// SPDX-License-Identifier: MIT
#pragma once

namespace kestrin::support {

/// Whether a sanitizer watches the programs: they start slowly then, and need more memory.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kWatched = true;
#else
inline constexpr bool kWatched = false;
#endif

}  // namespace kestrin::support
