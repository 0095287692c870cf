// SPDX-License-Identifier: MIT
#include "platform/process/Environment.h"

#if defined(_WIN32)
#include <windows.h>

#include "platform/process/WideText.h"
#else
#include <cstdlib>
#endif

namespace kestrin::platform::process {

#if defined(_WIN32)

std::optional<std::string> EnvironmentText(const char* name) {
  const std::wstring wideName = WideOf(name);
  std::wstring value;
  // Asked again for as long as somebody else makes it longer meanwhile.
  for (;;) {
    SetLastError(ERROR_SUCCESS);
    const DWORD length = GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (length == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
    const bool whole = length < value.size() || length == 0;
    value.resize(length);
    if (whole) return Utf8Of(value);
  }
}

#else

std::optional<std::string> EnvironmentText(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

#endif

}  // namespace kestrin::platform::process
