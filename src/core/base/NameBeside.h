// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace kestrin::core::base {

/// A name beside `path` that nobody else draws, for what takes the name `path` once it is complete. It does not grow
/// with the name of `path`, which may be as long as names can be. Nothing is made.
[[nodiscard]] std::filesystem::path NameBeside(const std::filesystem::path& path);
/// Whether it is such a name.
[[nodiscard]] bool IsNameBeside(const std::filesystem::path& path);

}  // namespace kestrin::core::base
