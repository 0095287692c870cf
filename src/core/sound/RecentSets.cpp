// SPDX-License-Identifier: MIT
#include "sound/RecentSets.h"

#include <algorithm>

namespace kestrin::core::sound {

namespace fs = std::filesystem;

RecentSets::RecentSets(const std::vector<fs::path>& stored) {
  for (auto path = stored.rbegin(); path != stored.rend(); ++path) Use(*path);
}

void RecentSets::Use(const fs::path& path) {
  if (path.empty()) return;
  Forget(path);
  m_paths.insert(m_paths.begin(), path);
  if (m_paths.size() > kMost) m_paths.resize(kMost);
}

void RecentSets::Forget(const fs::path& path) {
  m_paths.erase(std::remove(m_paths.begin(), m_paths.end(), path), m_paths.end());
}

}  // namespace kestrin::core::sound
