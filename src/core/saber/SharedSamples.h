// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace kestrin::core::saber {

/// Samples that stay for as long as anybody plays them; none: no sound. 48,000 a second.
using SharedSamples = std::shared_ptr<const std::vector<std::int16_t>>;

}  // namespace kestrin::core::saber
