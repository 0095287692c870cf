// SPDX-License-Identifier: MIT
#include "platform/files/SystemDisk.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <utility>

namespace kestrin::platform::files {

namespace {

/// An open file; -1 for none.
class Descriptor {
 public:
  explicit Descriptor(int number) : m_number(number) {}
  ~Descriptor() {
    if (m_number >= 0) (void)::close(m_number);
  }
  Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor& operator=(Descriptor&&) = delete;

  [[nodiscard]] int Number() const { return m_number; }
  [[nodiscard]] bool IsOpen() const { return m_number >= 0; }

 private:
  int m_number;
};

/// Closing the descriptor gives the lock back, and so does the end of the program.
class HeldLock final : public core::base::Disk::Lock {
 public:
  explicit HeldLock(Descriptor&& file) : m_file(std::move(file)) {}

 private:
  Descriptor m_file;
};

std::error_code Reason() { return {errno, std::generic_category()}; }

/// Repeats a call that a signal broke off.
template <typename Call>
int Again(Call call) {
  int result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

bool IsFolder(const std::filesystem::path& path) {
  struct stat about {};
  return ::stat(path.c_str(), &about) == 0 && S_ISDIR(about.st_mode);
}

/// Makes something of that name, which only one program can, and puts the other in its place.
std::error_code TakeReservedName(const std::filesystem::path& made, const std::filesystem::path& name) {
  constexpr mode_t kFolderOfEverybody = 0777;
  constexpr mode_t kOfTheOwner = 0600;
  if (IsFolder(made)) {
    if (::mkdir(name.c_str(), kFolderOfEverybody) != 0) return Reason();
  } else {
    const Descriptor reserved(
        Again([&] { return ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOfTheOwner); }));
    if (!reserved.IsOpen()) return Reason();
  }
  if (::rename(made.c_str(), name.c_str()) == 0) return {};
  const std::error_code why = Reason();
  (void)::remove(name.c_str());
  return why;
}

}  // namespace

std::error_code SystemDisk::Flush(const std::filesystem::path& path) {
  const bool folder = IsFolder(path);
  // Never waits for the other end of a pipe.
  const Descriptor file(Again([&] { return ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); }));
  if (!file.IsOpen()) return folder && errno == EACCES ? std::error_code() : Reason();
  if (Again([&] { return ::fsync(file.Number()); }) == 0) return {};
  return folder && (errno == EINVAL || errno == ENOTSUP || errno == EBADF) ? std::error_code() : Reason();
}

core::base::Disk::LockResult SystemDisk::TryLock(const std::filesystem::path& path) {
  constexpr mode_t kForEverybody = 0666;
  constexpr int kHow = O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  Descriptor file(Again([&] { return ::open(path.c_str(), kHow, kForEverybody); }));
  if (!file.IsOpen()) return {nullptr, false, Reason()};
  if (Again([&] { return ::flock(file.Number(), LOCK_EX | LOCK_NB); }) == 0)
    return {std::make_unique<HeldLock>(std::move(file)), false, {}};
  if (errno == EWOULDBLOCK) return {nullptr, true, {}};
  return {nullptr, false, Reason()};
}

std::error_code SystemDisk::TakeFreeName(const std::filesystem::path& made, const std::filesystem::path& name) {
#ifdef RENAME_NOREPLACE
  if (::renameat2(AT_FDCWD, made.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) == 0) return {};
  // Some disks, and older kernels, know only the old way.
  if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP) return Reason();
#endif
  return TakeReservedName(made, name);
}

}  // namespace kestrin::platform::files
