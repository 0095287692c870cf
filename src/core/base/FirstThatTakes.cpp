// SPDX-License-Identifier: MIT
#include "base/FirstThatTakes.h"

#include <system_error>

namespace kestrin::core::base {

std::filesystem::path FirstThatTakes(std::span<const std::filesystem::path> folders,
                                     const std::function<bool(const std::filesystem::path&)>& takes) {
  for (const std::filesystem::path& folder : folders) {
    if (folder.empty()) continue;
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    if (takes(folder)) return folder;
  }
  return {};
}

}  // namespace kestrin::core::base
