// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace kestrin::platform::hid {

/// Elements of a report are numbers of any width at any bit, least significant bit first: bit n of a report is bit n %
/// 8 of byte n / 8. Bits beyond the report's end read 0 and are not written.

/// The `bits` bits from `bitOffset` on as an unsigned number; of wider elements the lowest 32 bits.
[[nodiscard]] std::uint32_t GetBits(std::span<const std::uint8_t> report, std::size_t bitOffset, std::size_t bits);
/// Writes the lowest `bits` bits of `value`; of elements wider than 32 bits the rest becomes 0.
void SetBits(std::span<std::uint8_t> report, std::size_t bitOffset, std::size_t bits, std::uint32_t value);

/// `value`, of which only the lowest `bits` bits count, as a two's complement number.
[[nodiscard]] std::int32_t SignExtend(std::uint32_t value, std::size_t bits);

}  // namespace kestrin::platform::hid
