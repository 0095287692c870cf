// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "platform/audio/OpeningFailure.h"
#include "platform/audio/SourceFile.h"

namespace kestrin::platform::audio {

namespace {

/// Repeats a call that a signal broke off.
template <typename Call>
auto Again(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

class PosixSourceFile final : public SourceFile {
 public:
  /// Takes over the descriptor.
  PosixSourceFile(int number, const struct stat& about)
      : SourceFile(static_cast<std::uint64_t>(about.st_size)), m_number(number), m_about(about) {}
  ~PosixSourceFile() override { (void)::close(m_number); }

  [[nodiscard]] bool HasChanged() const override {
    struct stat now {};
    if (::fstat(m_number, &now) != 0) return true;
    return now.st_size != m_about.st_size || now.st_mtim.tv_sec != m_about.st_mtim.tv_sec ||
           now.st_mtim.tv_nsec != m_about.st_mtim.tv_nsec;
  }

 private:
  [[nodiscard]] std::int64_t Read(std::uint64_t offset, void* bytes, std::size_t most) override {
    return Again([&] { return ::pread(m_number, bytes, most, static_cast<off_t>(offset)); });
  }

  int m_number;
  struct stat m_about;
};

}  // namespace

core::base::Result<std::unique_ptr<SourceFile>> SourceFile::Open(const std::filesystem::path& path) {
  constexpr int kHow = O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
  const int number = Again([&] { return ::open(path.c_str(), kHow); });
  if (number < 0 && errno == ENXIO) return NotAFile();
  if (number < 0) return OpeningFailure({errno, std::generic_category()});
  struct stat about {};
  if (::fstat(number, &about) == 0 && S_ISREG(about.st_mode))
    return std::unique_ptr<SourceFile>(std::make_unique<PosixSourceFile>(number, about));
  (void)::close(number);
  return NotAFile();
}

}  // namespace kestrin::platform::audio
