// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kestrin::ui::kit {

/// A place where browsing for sounds can start.
struct Drive {
  /// What the person reads, UTF-8: "C:", "Home", the name of a memory stick.
  std::string label;
  std::filesystem::path path;
};

/// The port to the folders and drives that the desktop knows.
class SpecialFolders {
 public:
  virtual ~SpecialFolders() = default;
  /// The folder whose contents lie on the person's desktop; empty when the system has none.
  [[nodiscard]] virtual std::filesystem::path Desktop() const = 0;
  /// The folder of the person's own documents; empty when the system has none.
  [[nodiscard]] virtual std::filesystem::path Documents() const = 0;
  /// On Windows the logical drives ("C:"), elsewhere the root, the home folder and the mounted volumes.
  [[nodiscard]] virtual std::vector<Drive> Drives() const = 0;
};

}  // namespace kestrin::ui::kit
