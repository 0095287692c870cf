// SPDX-License-Identifier: MIT
#include "base/NewFile.h"

#include <cerrno>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#endif

namespace kestrin::core::base {

namespace {

/// Fails when there is anything of that name.
std::FILE* MakeExclusively(const std::filesystem::path& path) {
#ifdef _WIN32
  // Only wide characters can name every file there. The "x" of fopen() is no good: the runtime library that every
  // Windows has takes no notice of it, and would empty a file that is there.
  // A program that is started meanwhile does not get it: it would keep the file from its name.
  constexpr int kHow = _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY | _O_NOINHERIT;
  const int number = _wopen(path.c_str(), kHow, _S_IREAD | _S_IWRITE);
  if (number < 0) return nullptr;
  std::FILE* const file = _fdopen(number, "wb");
  if (file == nullptr) {
    const int why = errno;
    (void)_close(number);
    errno = why;
  }
  return file;
#else
  return std::fopen(path.c_str(), "wbx");
#endif
}

}  // namespace

NewFile::NewFile(const std::filesystem::path& path) {
  errno = 0;
  m_file.reset(MakeExclusively(path));
  (void)Note(IsOpen());
}

bool NewFile::Write(std::string_view bytes) {
  errno = 0;
  return Note(std::fwrite(bytes.data(), 1, bytes.size(), m_file.get()) == bytes.size());
}

bool NewFile::Close() {
  errno = 0;
  return Note(std::fclose(m_file.release()) == 0);
}

Failure NewFile::Why() const { return {KindOf(m_error), m_error ? m_error.message() : "the disk refused it"}; }

bool NewFile::Note(bool success) {
  if (!success) m_error.assign(errno, std::generic_category());
  return success;
}

}  // namespace kestrin::core::base
