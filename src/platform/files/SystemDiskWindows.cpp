// SPDX-License-Identifier: MIT
#include <windows.h>

#include <memory>

#include "platform/files/SystemDisk.h"

namespace kestrin::platform::files {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct HandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const {
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
  }
};
using Handle = std::unique_ptr<void, HandleCloser>;

/// Closing the handle gives the lock back, and so does the end of the program.
class HeldLock final : public core::base::Disk::Lock {
 public:
  explicit HeldLock(Handle&& file) : m_file(std::move(file)) {}

 private:
  Handle m_file;
};

std::error_code Reason() { return {static_cast<int>(GetLastError()), std::system_category()}; }

}  // namespace

std::error_code SystemDisk::Flush(const std::filesystem::path& path) {
  std::error_code ignored;
  // Folders are written through there.
  if (std::filesystem::is_directory(path, ignored)) return {};
  const Handle file(CreateFileW(path.c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
  if (file.get() == INVALID_HANDLE_VALUE) return Reason();
  return FlushFileBuffers(file.get()) != 0 ? std::error_code() : Reason();
}

core::base::Disk::LockResult SystemDisk::TryLock(const std::filesystem::path& path) {
  Handle file(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, kShareAll, nullptr, OPEN_ALWAYS, 0, nullptr));
  if (file.get() == INVALID_HANDLE_VALUE) return {nullptr, false, Reason()};
  OVERLAPPED wholeFile{};
  if (LockFileEx(file.get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, MAXDWORD, MAXDWORD, &wholeFile) !=
      0)
    return {std::make_unique<HeldLock>(std::move(file)), false, {}};
  if (GetLastError() == ERROR_LOCK_VIOLATION || GetLastError() == ERROR_IO_PENDING) return {nullptr, true, {}};
  return {nullptr, false, Reason()};
}

}  // namespace kestrin::platform::files
