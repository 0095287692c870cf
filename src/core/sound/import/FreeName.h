// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace kestrin::core::sound {

/// Names for a new ".lsu" file: "hum.lsu", and if there is one in the folder, in any letter case, "hum 2.lsu" and so
/// on.
class FreeName {
 public:
  /// `name`: without an ending, one that can be stored.
  FreeName(std::filesystem::path folder, std::string name);

  /// The next name that was free when the object was made.
  [[nodiscard]] std::filesystem::path Next();
  /// Whether the last name has a number.
  [[nodiscard]] bool HasNumber() const { return m_number > 1; }
  /// Whether trying on makes sense; a folder that refuses every name says so instead.
  [[nodiscard]] bool MayGoOn() const;

 private:
  std::filesystem::path m_folder;
  std::string m_name;
  /// The names in the folder, in small letters.
  std::set<std::string> m_taken;
  int m_number = 0;
};

}  // namespace kestrin::core::sound
