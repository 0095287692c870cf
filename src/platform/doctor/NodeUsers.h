// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace kestrin::platform::doctor {

/// Who has a device file open.
struct NodeUsers {
  /// This program.
  bool isOurs = false;
  /// The others, "kestrin (1234), other (56)"; those that the system does not show to this person are left out.
  std::string others;
};

/// Looks through /proc, in which everything may vanish at any moment. `node` is the device file itself, `root` is where
/// /proc begins.
[[nodiscard]] NodeUsers FindNodeUsers(const std::filesystem::path& node, const std::filesystem::path& root);

}  // namespace kestrin::platform::doctor
