// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

namespace kestrin::core::base {

/// Byte `n` of the value's little-endian memory image: n = 0 is bits 0-7 ... n = 3 is bits 24-31; any other n gives 0.
[[nodiscard]] std::uint8_t ExtractByte(std::uint32_t value, int n);

/// Writes the low 16 bits of `value` most significant byte first into `out[0..1]`.
void PutBig16(std::span<std::uint8_t, 2> out, std::uint32_t value);

/// Writes the low 24 bits of `value` most significant byte first into `out[0..2]`.
void PutBig24(std::span<std::uint8_t, 3> out, std::uint32_t value);

/// The 16-bit value of two bytes, most significant first.
[[nodiscard]] std::uint16_t GetBig16(std::span<const std::uint8_t, 2> in);

/// The 24-bit value of three bytes, most significant first.
[[nodiscard]] std::uint32_t GetBig24(std::span<const std::uint8_t, 3> in);

/// Every checksum of the board and its formats: the sum of the bytes modulo 65536.
[[nodiscard]] std::uint16_t ByteSum(std::span<const std::uint8_t> bytes);

}  // namespace kestrin::core::base
