// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

namespace kestrin::core::sound {

/// The configuration files that the person used last, the latest first, each of them once. The owner stores them.
class RecentSets {
 public:
  static constexpr std::size_t kMost = 8;

  RecentSets() = default;
  /// Takes up what was stored: empty and repeated paths and those beyond the eighth are left out.
  explicit RecentSets(const std::vector<std::filesystem::path>& stored);

  /// The set was loaded or saved: it becomes the first.
  void Use(const std::filesystem::path& path);
  /// The set cannot be found any more.
  void Forget(const std::filesystem::path& path);
  [[nodiscard]] const std::vector<std::filesystem::path>& Paths() const { return m_paths; }

 private:
  std::vector<std::filesystem::path> m_paths;
};

}  // namespace kestrin::core::sound
