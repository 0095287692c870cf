// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "core/base/Result.h"

namespace kestrin::platform::hid {

/// What to tell a person whose board is there but cannot be used: which one it is, why, and what to do about it. The
/// failure is one of HidStack.
[[nodiscard]] std::string AccessAdvice(const std::string& path, const core::base::Failure& failure);

}  // namespace kestrin::platform::hid
