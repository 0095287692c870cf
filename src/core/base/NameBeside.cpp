// SPDX-License-Identifier: MIT
#include "base/NameBeside.h"

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace kestrin::core::base {

std::filesystem::path NameBeside(const std::filesystem::path& path) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::random_device chance;
  std::string name = ".kestrin-";
  for (int half = 0; half < 2; ++half) {
    std::uint32_t bits = chance();
    for (int digit = 0; digit < 8; ++digit, bits >>= 4) name += kDigits[bits & 0xF];
  }
  return path.parent_path() / (name + ".new");
}

}  // namespace kestrin::core::base
