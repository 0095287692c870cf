// SPDX-License-Identifier: MIT
#include "platform/hid/ReportBits.h"

namespace kestrin::platform::hid {

namespace {

constexpr std::size_t kValueBits = 32;

}  // namespace

std::uint32_t GetBits(std::span<const std::uint8_t> report, std::size_t bitOffset, std::size_t bits) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < bits && i < kValueBits; ++i) {
    const std::size_t at = bitOffset + i;
    if (at / 8 >= report.size()) break;
    value |= static_cast<std::uint32_t>((report[at / 8] >> (at % 8)) & 1U) << i;
  }
  return value;
}

void SetBits(std::span<std::uint8_t> report, std::size_t bitOffset, std::size_t bits, std::uint32_t value) {
  for (std::size_t i = 0; i < bits; ++i) {
    const std::size_t at = bitOffset + i;
    if (at / 8 >= report.size()) break;
    const auto mask = static_cast<std::uint8_t>(1U << (at % 8));
    const bool set = i < kValueBits && ((value >> i) & 1U) != 0;
    report[at / 8] = static_cast<std::uint8_t>(set ? report[at / 8] | mask : report[at / 8] & ~mask);
  }
}

std::int32_t SignExtend(std::uint32_t value, std::size_t bits) {
  if (bits > 0 && bits < kValueBits && ((value >> (bits - 1)) & 1U) != 0) {
    value |= ~std::uint32_t{0} << bits;
  }
  return static_cast<std::int32_t>(value);
}

}  // namespace kestrin::platform::hid
