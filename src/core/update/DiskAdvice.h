// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "base/Result.h"

namespace kestrin::core::update {

/// What the person can do about a file or folder that could not be written, as a sentence.
[[nodiscard]] std::string DiskAdvice(base::FailureKind kind);

}  // namespace kestrin::core::update
