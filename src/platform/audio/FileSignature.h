// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace kestrin::platform::audio {

/// Why the sound library takes no file that begins with these bytes, and what to do, as a text for the person. `start`:
/// the first kSignatureBytes of the file, fewer when it has fewer.
[[nodiscard]] std::string WhyNoSound(std::string_view start);

/// How much of a file tells what kind it is of.
inline constexpr std::size_t kSignatureBytes = 16;

}  // namespace kestrin::platform::audio
