#pragma once

#include <string>

#include "platform/hid/HidStack.h"

namespace kestrin::platform::hid {

/// What to tell a person whose board is there but cannot be used: which one it is, why, and what to do about it; ""
/// when it can.
[[nodiscard]] std::string AccessAdvice(const std::string& path, const Access& access);

}  // namespace kestrin::platform::hid
