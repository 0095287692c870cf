// SPDX-License-Identifier: MIT
#include <windows.h>

#include <array>
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

std::error_code SystemDisk::TakeFreeName(const std::filesystem::path& made, const std::filesystem::path& name) {
  // Scanners of viruses open what was just written, for a few milliseconds each.
  constexpr std::array<DWORD, 5> kPauses{10, 20, 40, 80, 100};
  for (auto pause = kPauses.begin();; ++pause) {
    if (MoveFileExW(made.c_str(), name.c_str(), 0) != 0) return {};
    const DWORD why = GetLastError();
    if (why == ERROR_ALREADY_EXISTS || why == ERROR_FILE_EXISTS) return std::make_error_code(std::errc::file_exists);
    const bool mayPass = why == ERROR_SHARING_VIOLATION || why == ERROR_ACCESS_DENIED;
    if (!mayPass || pause == kPauses.end()) return {static_cast<int>(why), std::system_category()};
    Sleep(*pause);
  }
}

}  // namespace kestrin::platform::files
