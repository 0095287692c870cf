// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kestrin::platform::hid {

/// Name and version of the HID library that is used: "hidapi 0.13.1".
[[nodiscard]] std::string HidLibrary();

}  // namespace kestrin::platform::hid
