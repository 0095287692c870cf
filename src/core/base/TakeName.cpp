// SPDX-License-Identifier: MIT
#include "base/TakeName.h"

#include <system_error>

namespace kestrin::core::base {

namespace fs = std::filesystem;

Result<> TakeName(const fs::path& made, const fs::path& name) {
  std::error_code error;
  fs::rename(made, name, error);
  if (!error) return {};
  Failure why = FailureOf(error);
#ifdef _WIN32
  // Of a file that is open Windows says no more than that it does not permit it. A file could be made in this folder
  // just now, so it is nothing about the folder.
  std::error_code ignored;
  const fs::file_status old = fs::status(name, ignored);
  const bool writable = (old.permissions() & fs::perms::owner_write) != fs::perms::none;
  if (why.kind == FailureKind::NotPermitted && fs::is_regular_file(old) && writable)
    why = {FailureKind::InUse, kOpenElsewhere};
#endif
  return why;
}

}  // namespace kestrin::core::base
