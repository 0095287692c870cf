// SPDX-License-Identifier: MIT
#include "sound/PathEnd.h"

#include <algorithm>

#include "base/PathText.h"
#include "base/Text.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

PathEnd::PathEnd(std::string_view path) {
  for (std::size_t end = 0; end != path.npos;) {
    end = path.find_first_of("/\\");
    const std::string_view piece = path.substr(0, end);
    if (end != path.npos) path.remove_prefix(end + 1);
    if (piece == ".." || piece.ends_with(':'))
      m_pieces.clear();
    else if (!piece.empty() && piece != ".")
      m_pieces.push_back(piece);
  }
  if (m_pieces.size() > kMostPieces) m_pieces.erase(m_pieces.begin(), m_pieces.end() - kMostPieces);
}

std::size_t PathEnd::SharedWith(const PathEnd& other) const {
  const auto differs = std::mismatch(m_pieces.rbegin(), m_pieces.rend(), other.m_pieces.rbegin(), other.m_pieces.rend(),
                                     base::EqualsIgnoringCase);
  return static_cast<std::size_t>(differs.first - m_pieces.rbegin());
}

std::vector<fs::path> PathEnd::PlacesAround(const fs::path& folder) const {
  std::vector<fs::path> folders{folder};
  for (int level = 0; level < 2 && folders.back().has_relative_path(); ++level)
    folders.push_back(folders.back().parent_path());
  std::vector<fs::path> places;
  fs::path end;
  for (auto piece = m_pieces.rbegin(); piece != m_pieces.rend(); ++piece) {
    end = end.empty() ? base::PathOf(*piece) : base::PathOf(*piece) / end;
    // A bare name around the folder could be anybody's.
    const std::size_t count = piece == m_pieces.rbegin() ? 1 : folders.size();
    for (std::size_t i = count; i > 0; --i) places.push_back(folders[i - 1] / end);
  }
  std::reverse(places.begin(), places.end());
  return places;
}

}  // namespace kestrin::core::sound
