// SPDX-License-Identifier: MIT
#include "ui/help/HelpSeal.h"

#include <array>

namespace kestrin::ui::help {

namespace {

constexpr std::size_t kSealAt = 16;
constexpr std::size_t kSealSize = 4;

constexpr std::array<std::uint32_t, 256> MakeTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
    std::uint32_t crc = byte;
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320U : crc >> 1;
    table[byte] = crc;
  }
  return table;
}

constexpr std::array<std::uint32_t, 256> kTable = MakeTable();

}  // namespace

std::uint32_t HelpSealOf(std::string_view file) {
  std::uint32_t crc = 0xFFFFFFFFU;
  for (std::size_t at = 0; at < file.size(); ++at) {
    const bool seal = at >= kSealAt && at < kSealAt + kSealSize;
    const std::uint8_t byte = seal ? 0 : static_cast<std::uint8_t>(file[at]);
    crc = crc >> 8 ^ kTable[(crc ^ byte) & 0xFF];
  }
  return crc ^ 0xFFFFFFFFU;
}

bool HasValidHelpSeal(std::string_view file) {
  if (file.size() < kSealAt + kSealSize || file.substr(0, 4) != "ITSF") return false;
  std::uint32_t seal = 0;
  for (std::size_t i = kSealSize; i-- > 0;) seal = seal << 8 | static_cast<std::uint8_t>(file[kSealAt + i]);
  return seal == HelpSealOf(file);
}

}  // namespace kestrin::ui::help
