// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace kestrin::platform::process {

/// Text of Windows as UTF-8. What is no character, half a pair that stands alone, becomes U+FFFD.
[[nodiscard]] std::string Utf8Of(std::wstring_view text);

/// UTF-8 as text of Windows; bytes that are none become U+FFFD.
[[nodiscard]] std::wstring WideOf(std::string_view text);

}  // namespace kestrin::platform::process
