// SPDX-License-Identifier: MIT
#include "base/Bytes.h"

#include <numeric>

namespace kestrin::core::base {

std::uint8_t ExtractByte(std::uint32_t value, int n) {
  return n < 0 || n > 3 ? std::uint8_t{0} : static_cast<std::uint8_t>(value >> (8 * n));
}

void PutBig16(std::span<std::uint8_t, 2> out, std::uint32_t value) {
  out[0] = ExtractByte(value, 1);
  out[1] = ExtractByte(value, 0);
}

void PutBig24(std::span<std::uint8_t, 3> out, std::uint32_t value) {
  out[0] = ExtractByte(value, 2);
  out[1] = ExtractByte(value, 1);
  out[2] = ExtractByte(value, 0);
}

std::uint16_t GetBig16(std::span<const std::uint8_t, 2> in) { return static_cast<std::uint16_t>(in[0] << 8 | in[1]); }

std::uint32_t GetBig24(std::span<const std::uint8_t, 3> in) {
  return std::uint32_t{in[0]} << 16 | std::uint32_t{in[1]} << 8 | in[2];
}

std::uint16_t ByteSum(std::span<const std::uint8_t> bytes) {
  // 32 bits may wrap: 65536 divides 2^32, so the sum modulo 65536 survives.
  return static_cast<std::uint16_t>(std::accumulate(bytes.begin(), bytes.end(), std::uint32_t{0}));
}

}  // namespace kestrin::core::base
