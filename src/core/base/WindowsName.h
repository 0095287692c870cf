// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace kestrin::core::base {

/// Whether Windows keeps a name for a device, whatever stands behind a dot: "NUL", "com1.lsu".
[[nodiscard]] bool IsDeviceName(std::string_view name);

/// Why Windows cannot store a file of that name, with what to do, as the end of a sentence; "" when it can. It would
/// write such a file to a device, under another name, or into another file. The name is one without folders.
[[nodiscard]] std::string_view WhyNoWindowsName(std::string_view name);

}  // namespace kestrin::core::base
