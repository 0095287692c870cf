// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kestrin::core::base {

/// What a line ends with in the system's own text files and answers.
inline constexpr std::string_view kLineEnd = "\r\n";

/// The pieces of `text` between the literal `separator`: always at least one, and one more than there are separators.
/// The pieces refer into `text`.
[[nodiscard]] std::vector<std::string_view> Split(std::string_view text, std::string_view separator);

/// Whether two texts are equal without regard to the case of the letters A to Z.
[[nodiscard]] bool EqualsIgnoringCase(std::string_view a, std::string_view b);

/// The bare file name: what follows the last folder separator of a path, behind either "\" or "/".
[[nodiscard]] std::string LastPathPiece(std::string_view path);

/// A text from outside - a name, a path, a line of an answer - as it can be shown to a person: each control character
/// becomes "?", since a terminal would obey it. So does a line break, which would pass for the program's own.
[[nodiscard]] std::string Shown(std::string_view text);
/// The same between quotation marks.
[[nodiscard]] std::string Quoted(std::string_view text);
/// Shown() for a text of several lines: line feeds stay.
[[nodiscard]] std::string ShownLines(std::string_view text);

/// How many characters a UTF-8 text has.
[[nodiscard]] std::size_t Width(std::string_view text);
/// The first characters of a UTF-8 text, at most `count`.
[[nodiscard]] std::string_view FirstCharacters(std::string_view text, std::size_t count);

}  // namespace kestrin::core::base
