// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kestrin::core::sound {

/// What the ending of a file's name lets expect.
enum class SoundEnding {
  /// No sound.
  None,
  /// A sound of the board's own format, ".lsu": it is taken as it is.
  OfTheBoard,
  /// A sound that can be imported.
  Readable,
  /// A sound of a format that nobody here reads: opening it tells what to save it as.
  Foreign,
};

/// By what follows the last "." of the file's name, in any letter case.
[[nodiscard]] SoundEnding EndingOf(const std::filesystem::path& path);
/// The same of a name in UTF-8, which may be none that this system can store.
[[nodiscard]] SoundEnding EndingOfName(std::string_view name);

/// The endings of that kind, each without its "." and in small letters.
[[nodiscard]] std::vector<std::string_view> EndingsOf(SoundEnding kind);

}  // namespace kestrin::core::sound
