// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <string_view>
#include <vector>

namespace kestrin::core::sound {

/// What a path says about a file that is not there any more: how its path ends.
///
/// Paths come out of sets that were made anywhere, so folders are separated by either "\" or "/".
class PathEnd {
 public:
  /// Of a deeper path only so many folders and the name count.
  static constexpr std::size_t kMostPieces = 32;

  /// `path` is UTF-8 and must outlive the object. A drive, and all in front of a "..", says nothing about a file's
  /// place.
  explicit PathEnd(std::string_view path);

  /// The bare name of the file; "" when the path is empty.
  [[nodiscard]] std::string_view Name() const { return m_pieces.empty() ? std::string_view() : m_pieces.back(); }
  /// The folders and the name, without separators.
  [[nodiscard]] const std::vector<std::string_view>& Pieces() const { return m_pieces; }
  /// In how many pieces, from the file's name backwards, two paths are the same but for the case of their letters.
  [[nodiscard]] std::size_t SharedWith(const PathEnd& other) const;
  /// Where the file would lie if it had moved together with `folder`, in which the set lies: the same end of its path
  /// below that folder or one of the two around it, the longest end first; at last the folder itself.
  [[nodiscard]] std::vector<std::filesystem::path> PlacesAround(const std::filesystem::path& folder) const;

 private:
  std::vector<std::string_view> m_pieces;
};

}  // namespace kestrin::core::sound
