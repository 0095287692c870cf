#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestrin::base {

/// The pieces of `text` between the literal `separator`: always at least one, and one more than there are separators.
/// The pieces refer into `text`.
[[nodiscard]] std::vector<std::string_view> Split(std::string_view text, std::string_view separator);

/// Whether two texts are equal without regard to the case of the letters A to Z.
[[nodiscard]] bool EqualsIgnoringCase(std::string_view a, std::string_view b);

/// The bare file name: what follows the last folder separator of a path, behind either "\" or "/".
[[nodiscard]] std::string LastPathPiece(std::string_view path);

}  // namespace kestrin::base
