// SPDX-License-Identifier: MIT
#include "platform/files/LeftBehind.h"

#include <chrono>
#include <system_error>

#include "core/base/NameBeside.h"
#include "platform/files/OwnFile.h"

namespace kestrin::platform::files {

namespace fs = std::filesystem;

namespace {

/// Nothing is written for that long without a pause.
constexpr std::chrono::hours kAge{24};

bool IsOld(const fs::path& file, fs::file_time_type now) {
  std::error_code error;
  const fs::file_time_type written = fs::last_write_time(file, error);
  return !error && written < now - kAge;
}

}  // namespace

void RemoveLeftBehind(const fs::path& folder, fs::file_time_type now) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    const fs::path& path = entry->path();
    std::error_code ignored;
    if (core::base::IsNameBeside(path) && IsOwnFile(path) && IsOld(path, now)) fs::remove(path, ignored);
  }
}

}  // namespace kestrin::platform::files
