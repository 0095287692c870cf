// SPDX-License-Identifier: MIT
#include <windows.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "platform/files/RegularFile.h"

namespace kestrin::platform::files {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

struct RegularFile::Handle {
  explicit Handle(HANDLE opened) : number(opened) {}
  ~Handle() { CloseHandle(number); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  HANDLE number;
  BY_HANDLE_FILE_INFORMATION about{};
};

namespace {

std::uint64_t SizeOf(const BY_HANDLE_FILE_INFORMATION& about) {
  return std::uint64_t{about.nFileSizeHigh} << 32 | about.nFileSizeLow;
}

Failure WhyNotRead() { return core::base::FailureOf({static_cast<int>(GetLastError()), std::system_category()}); }

}  // namespace

RegularFile::RegularFile(std::unique_ptr<Handle> handle, std::uint64_t size)
    : m_handle(std::move(handle)), m_size(size) {}
RegularFile::~RegularFile() = default;
RegularFile::RegularFile(RegularFile&& other) noexcept = default;
RegularFile& RegularFile::operator=(RegularFile&& other) noexcept = default;

Result<RegularFile> RegularFile::Open(const std::filesystem::path& path) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) return Failure{FailureKind::NotValid, "it is a folder"};
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE number = CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
  if (number == INVALID_HANDLE_VALUE) return WhyNotRead();
  auto handle = std::make_unique<Handle>(number);
  if (GetFileType(number) != FILE_TYPE_DISK) return Failure{FailureKind::NotValid, "it is a device or a pipe, no file"};
  if (GetFileInformationByHandle(number, &handle->about) == 0) return WhyNotRead();
  const std::uint64_t size = SizeOf(handle->about);
  return RegularFile(std::move(handle), size);
}

bool RegularFile::HasChanged() const {
  const BY_HANDLE_FILE_INFORMATION& before = m_handle->about;
  BY_HANDLE_FILE_INFORMATION now{};
  return GetFileInformationByHandle(m_handle->number, &now) == 0 || SizeOf(now) != SizeOf(before) ||
         CompareFileTime(&now.ftLastWriteTime, &before.ftLastWriteTime) != 0;
}

Result<std::size_t> RegularFile::ReadAt(std::uint64_t offset, std::span<char> bytes) const {
  constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
  std::size_t read = 0;
  while (read < bytes.size()) {
    const std::uint64_t place = offset + read;
    OVERLAPPED from{};
    from.Offset = static_cast<DWORD>(place & 0xFFFFFFFF);
    from.OffsetHigh = static_cast<DWORD>(place >> 32);
    DWORD count = 0;
    const auto wanted = static_cast<DWORD>(std::min(bytes.size() - read, kMostAtOnce));
    if (ReadFile(m_handle->number, bytes.data() + read, wanted, &count, &from) == 0) {
      if (GetLastError() == ERROR_HANDLE_EOF) break;
      return WhyNotRead();
    }
    if (count == 0) break;
    read += count;
  }
  return read;
}

}  // namespace kestrin::platform::files
