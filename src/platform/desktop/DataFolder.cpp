// SPDX-License-Identifier: MIT
#include "platform/desktop/DataFolder.h"

#include <cstdlib>

namespace kestrin::platform::desktop {

namespace fs = std::filesystem;

namespace {

constexpr const char* kName = "kestrin";

#if !defined(_WIN32)
/// The folder that an environment variable names; empty when it is not set or relative.
fs::path FolderIn(const char* variable) {
  const char* const value = std::getenv(variable);
  fs::path folder = value == nullptr ? "" : value;
  return folder.is_absolute() ? folder : fs::path();
}
#endif

}  // namespace

fs::path DataFolder() {
#if defined(_WIN32)
  // The wide variant: names of people need not fit the system's code page.
  const wchar_t* const folder = _wgetenv(L"APPDATA");
  return folder == nullptr ? fs::path() : fs::path(folder) / kName;
#elif defined(__APPLE__)
  const fs::path home = FolderIn("HOME");
  return home.empty() ? fs::path() : home / "Library" / "Application Support" / kName;
#else
  if (const fs::path data = FolderIn("XDG_DATA_HOME"); !data.empty()) return data / kName;
  const fs::path home = FolderIn("HOME");
  return home.empty() ? fs::path() : home / ".local" / "share" / kName;
#endif
}

}  // namespace kestrin::platform::desktop
