// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kestrin::core::doctor {

/// Bytes as upper-case hexadecimal, two digits each, with `separator` between them.
[[nodiscard]] std::string HexText(std::span<const std::uint8_t> bytes, std::string_view separator);

}  // namespace kestrin::core::doctor
