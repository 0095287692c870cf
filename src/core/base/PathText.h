// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/Text.h"

namespace kestrin::core::base {

/// A path as UTF-8 text, as it was given: nothing is made absolute, no separator changed.
[[nodiscard]] inline std::string TextOf(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

/// The path of a UTF-8 text. Where paths are bytes they are taken as they stand; where they are characters a text that
/// is no UTF-8 is taken in the system's own code page, in which older programs wrote.
[[nodiscard]] inline std::filesystem::path PathOf(std::string_view text) {
  try {
    return std::u8string(text.begin(), text.end());
  } catch (const std::exception&) {
    return std::string(text);
  }
}

/// TextOf() as a text for the person has it: between quotation marks, control characters harmless. Only for what is a
/// path already, since any text could become one.
template <std::same_as<std::filesystem::path> Path>
[[nodiscard]] std::string Quoted(const Path& path) {
  return Quoted(TextOf(path));
}

}  // namespace kestrin::core::base
