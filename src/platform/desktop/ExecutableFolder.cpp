// SPDX-License-Identifier: MIT
#include "platform/desktop/ExecutableFolder.h"

#include <system_error>

#if defined(_WIN32)
#include <windows.h>

#include <string>
#elif defined(__APPLE__)
#include <mach-o/dyld.h>

#include <cstdint>
#include <string>
#endif

namespace kestrin::platform::desktop {

namespace fs = std::filesystem;

fs::path ExecutableFolder() {
#if defined(_WIN32)
  // The longest path that the system has; a shorter buffer would cut it off without a word.
  constexpr std::size_t kLongest = 32768;
  std::wstring path(kLongest, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return fs::path(path).parent_path();
#elif defined(__APPLE__)
  std::uint32_t size = 0;
  _NSGetExecutablePath(nullptr, &size);
  std::string path(size, '\0');
  if (_NSGetExecutablePath(path.data(), &size) != 0) return {};
  std::error_code error;
  return fs::canonical(path.c_str(), error).parent_path();
#else
  std::error_code error;
  return fs::read_symlink("/proc/self/exe", error).parent_path();
#endif
}

}  // namespace kestrin::platform::desktop
