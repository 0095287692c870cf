// SPDX-License-Identifier: MIT
#include "base/NameBeside.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include "base/PathText.h"

namespace kestrin::core::base {

namespace {

constexpr std::string_view kBeginning = ".kestrin-";
constexpr std::string_view kHexDigits = "0123456789abcdef";
constexpr std::string_view kNewEnding = ".new";
constexpr std::size_t kDrawn = 16;

}  // namespace

std::filesystem::path NameBeside(const std::filesystem::path& path) {
  std::random_device chance;
  std::string name(kBeginning);
  for (int half = 0; half < 2; ++half) {
    std::uint32_t bits = chance();
    for (int digit = 0; digit < 8; ++digit, bits >>= 4) name += kHexDigits[bits & 0xF];
  }
  return path.parent_path() / (name + std::string(kNewEnding));
}

bool IsNameBeside(const std::filesystem::path& path) {
  const std::string name = TextOf(path.filename());
  return name.size() == kBeginning.size() + kDrawn + kNewEnding.size() && name.starts_with(kBeginning) &&
         name.ends_with(kNewEnding) &&
         name.find_first_not_of(kHexDigits, kBeginning.size()) == kBeginning.size() + kDrawn;
}

}  // namespace kestrin::core::base
