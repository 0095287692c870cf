// SPDX-License-Identifier: MIT
#include <system_error>

#include "platform/files/OwnFile.h"

namespace kestrin::platform::files {

bool IsOwnFile(const std::filesystem::path& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(std::filesystem::symlink_status(path, error));
}

}  // namespace kestrin::platform::files
