// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

#include "base/Result.h"

namespace kestrin::core::sound {

class SoundSet;

/// What has not been saved of a set, as a file: everything that a configuration file says, then a line with the path of
/// the set's own file and one that ends it. So it is read like any set, and nobody takes half of one for a whole one.
class UnsavedSet {
 public:
  /// The file's content for the set as it is now; the sounds' paths are whole ones. Fails with NotValid like
  /// ConfigurationFile::ContentOf().
  [[nodiscard]] static base::Result<std::string> ContentOf(const SoundSet& set);

  /// Looks at such a file. Fails with NotValid when it is not whole or no such file, else like TextLines::Read(). None
  /// of the sounds is looked for.
  [[nodiscard]] static base::Result<UnsavedSet> Read(const std::filesystem::path& file);

  /// The set's own file, as a whole path; empty when it has none yet.
  [[nodiscard]] const std::filesystem::path& Origin() const { return m_origin; }
  /// What the set is called: like SoundSet::Name().
  [[nodiscard]] std::string Name() const;
  /// Whether the set's own file says the very same, so that nothing would be lost.
  [[nodiscard]] bool IsSaved() const { return m_isSaved; }

 private:
  std::filesystem::path m_origin;
  bool m_isSaved = false;
};

}  // namespace kestrin::core::sound
