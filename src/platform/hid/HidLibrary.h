// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kestrin::platform::hid {

/// Name and version of the HID library that is used: "hidapi 0.13.1".
[[nodiscard]] std::string HidLibrary();

/// Name of the library that notices of plugging come from, which does not tell its version; "" where there is none.
[[nodiscard]] std::string MonitorLibrary();

}  // namespace kestrin::platform::hid
