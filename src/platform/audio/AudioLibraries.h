// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace kestrin::platform::audio {

/// Names and versions of the libraries that read, convert and measure sounds: "libsndfile 1.2.0" ...
[[nodiscard]] std::vector<std::string> AudioLibraries();

}  // namespace kestrin::platform::audio
