// SPDX-License-Identifier: MIT
#include "platform/files/OwnFile.h"

#include <sys/stat.h>
#include <unistd.h>

namespace kestrin::platform::files {

bool IsOwnFile(const std::filesystem::path& path) {
  struct stat about {};
  return ::lstat(path.c_str(), &about) == 0 && S_ISREG(about.st_mode) && about.st_uid == ::geteuid();
}

}  // namespace kestrin::platform::files
