// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <vector>

namespace kestrin::core::sound {

/// Looks for files by their names in a folder and everything below it, whatever the case of the letters.
class SoundSearch {
 public:
  /// Files and folders that are looked at; who points at a larger tree hears that it was too large.
  static constexpr std::size_t kMostEntries = 500'000;

  /// What was found.
  struct Result {
    /// For each path that was looked for, the files of its name: those whose paths share the longest end with it first.
    std::vector<std::vector<std::filesystem::path>> files;
    /// False: stopped, or the tree is too large. What was found until then counts.
    bool complete = false;
  };

  /// `goOn` is asked at every entry and ends the search by saying false. Links to folders are not followed, so none
  /// leads round in a circle; what may not be read is passed over.
  [[nodiscard]] static Result Run(const std::vector<std::filesystem::path>& wanted, const std::filesystem::path& folder,
                                  const std::function<bool()>& goOn = {}, std::size_t mostEntries = kMostEntries);
};

}  // namespace kestrin::core::sound
