// SPDX-License-Identifier: MIT
#include <windows.h>

#include <algorithm>
#include <limits>
#include <system_error>

#include "platform/audio/OpeningFailure.h"
#include "platform/audio/SourceFile.h"

namespace kestrin::platform::audio {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct HandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const {
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
  }
};
using Handle = std::unique_ptr<void, HandleCloser>;

std::uint64_t SizeOf(const BY_HANDLE_FILE_INFORMATION& about) {
  return std::uint64_t{about.nFileSizeHigh} << 32 | about.nFileSizeLow;
}

class WindowsSourceFile final : public SourceFile {
 public:
  WindowsSourceFile(Handle&& file, const BY_HANDLE_FILE_INFORMATION& about)
      : SourceFile(SizeOf(about)), m_file(std::move(file)), m_about(about) {}

  [[nodiscard]] bool HasChanged() const override {
    BY_HANDLE_FILE_INFORMATION now{};
    if (GetFileInformationByHandle(m_file.get(), &now) == 0) return true;
    return SizeOf(now) != SizeOf(m_about) || CompareFileTime(&now.ftLastWriteTime, &m_about.ftLastWriteTime) != 0;
  }

 private:
  [[nodiscard]] std::int64_t Read(std::uint64_t offset, void* bytes, std::size_t most) override {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    constexpr std::size_t kMost = std::size_t{1} << 30;
    DWORD read = 0;
    if (::ReadFile(m_file.get(), bytes, static_cast<DWORD>(std::min(most, kMost)), &read, &place) != 0) return read;
    return GetLastError() == ERROR_HANDLE_EOF ? 0 : -1;
  }

  Handle m_file;
  BY_HANDLE_FILE_INFORMATION m_about;
};

}  // namespace

core::base::Result<std::unique_ptr<SourceFile>> SourceFile::Open(const std::filesystem::path& path) {
  std::error_code ignored;
  // A folder would only be told as one that may not be opened.
  if (std::filesystem::is_directory(path, ignored)) return NotAFile();
  Handle file(CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
  if (file.get() == INVALID_HANDLE_VALUE)
    return OpeningFailure({static_cast<int>(GetLastError()), std::system_category()});
  BY_HANDLE_FILE_INFORMATION about{};
  if (GetFileType(file.get()) != FILE_TYPE_DISK || GetFileInformationByHandle(file.get(), &about) == 0)
    return NotAFile();
  return std::unique_ptr<SourceFile>(std::make_unique<WindowsSourceFile>(std::move(file), about));
}

}  // namespace kestrin::platform::audio
