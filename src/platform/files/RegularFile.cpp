// SPDX-License-Identifier: MIT
#include "platform/files/RegularFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace kestrin::platform::files {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

struct RegularFile::Handle {
  explicit Handle(int opened) : number(opened) {}
  ~Handle() { (void)::close(number); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  int number;
  struct stat about {};
};

namespace {

constexpr const char* kNoFile = "it is a device or a pipe, no file";

Failure WhyNotRead() { return core::base::FailureOf({errno, std::generic_category()}); }

}  // namespace

RegularFile::RegularFile(std::unique_ptr<Handle> handle, std::uint64_t size)
    : m_handle(std::move(handle)), m_size(size) {}
RegularFile::~RegularFile() = default;
RegularFile::RegularFile(RegularFile&& other) noexcept = default;
RegularFile& RegularFile::operator=(RegularFile&& other) noexcept = default;

Result<RegularFile> RegularFile::Open(const std::filesystem::path& path) {
  int number = -1;
  do number = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  while (number < 0 && errno == EINTR);
  if (number < 0 && errno == ENXIO) return Failure{FailureKind::NotValid, kNoFile};
  if (number < 0) return WhyNotRead();
  auto handle = std::make_unique<Handle>(number);
  struct stat& about = handle->about;
  if (::fstat(number, &about) != 0) return WhyNotRead();
  if (S_ISDIR(about.st_mode)) return Failure{FailureKind::NotValid, "it is a folder"};
  if (!S_ISREG(about.st_mode)) return Failure{FailureKind::NotValid, kNoFile};
  const auto size = static_cast<std::uint64_t>(about.st_size);
  return RegularFile(std::move(handle), size);
}

bool RegularFile::HasChanged() const {
  const struct stat& before = m_handle->about;
  struct stat now {};
  return ::fstat(m_handle->number, &now) != 0 || now.st_size != before.st_size ||
         now.st_mtim.tv_sec != before.st_mtim.tv_sec || now.st_mtim.tv_nsec != before.st_mtim.tv_nsec;
}

Result<std::size_t> RegularFile::ReadAt(std::uint64_t offset, std::span<char> bytes) const {
  std::size_t read = 0;
  while (read < bytes.size()) {
    const ssize_t count =
        ::pread(m_handle->number, bytes.data() + read, bytes.size() - read, static_cast<off_t>(offset + read));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return WhyNotRead();
    if (count == 0) break;
    read += static_cast<std::size_t>(count);
  }
  return read;
}

}  // namespace kestrin::platform::files
