// SPDX-License-Identifier: MIT
#pragma once

#include <system_error>

#include "core/base/Result.h"

namespace kestrin::platform::audio {

/// What is said of something that is no ordinary file.
[[nodiscard]] inline core::base::Failure NotAFile() {
  return {core::base::FailureKind::NotValid, "This is a folder or a device and no file. Choose a sound file."};
}

/// What is said of a file that the system does not open.
[[nodiscard]] inline core::base::Failure OpeningFailure(const std::error_code& error) {
  core::base::Failure failure = core::base::FailureOf(error);
  failure.text = failure.kind == core::base::FailureKind::NotFound
                     ? "The file is not there. Check its name and its folder."
                     : "The file cannot be opened: " + failure.text + ". Check that you may read it.";
  return failure;
}

}  // namespace kestrin::platform::audio
