#include "base/WholeFile.h"

#include <cerrno>
#include <fstream>
#include <string>
#include <system_error>

namespace kestrin::base {

namespace fs = std::filesystem;

namespace {

/// A name beside `path` that nothing has yet.
fs::path FreeNameBeside(const fs::path& path) {
  std::error_code ignored;
  fs::path name = path;
  name += ".new";
  for (int number = 2; fs::exists(fs::symlink_status(name, ignored)); ++number) {
    name = path;
    name += ".new" + std::to_string(number);
  }
  return name;
}

/// Writes and closes; "" or why it failed.
std::string WriteStraight(const fs::path& path, std::string_view content) {
  errno = 0;
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  file.close();
  if (!file.fail()) return "";
  const int reason = errno;
  return reason != 0 ? std::generic_category().message(reason) : "the disk refused it";
}

/// Writes beside the file and takes its name; "" or why it failed.
std::string Replace(const fs::path& path, const fs::file_status& old, std::string_view content) {
  const fs::path beside = FreeNameBeside(path);
  std::error_code error;
  std::string reason = WriteStraight(beside, content);
  if (reason.empty() && fs::exists(old)) fs::permissions(beside, old.permissions(), error);
  if (reason.empty()) {
    fs::rename(beside, path, error);
    if (error) reason = error.message();
  }
  if (!reason.empty()) fs::remove(beside, error);
  return reason;
}

}  // namespace

std::string WriteWholeFile(const fs::path& path, std::string_view content) {
  std::error_code error;
  const fs::file_status old = fs::status(path, error);
  std::string reason;
  if (fs::is_directory(old))
    reason = "a folder of that name is in the way";
  else if (fs::exists(old) && !fs::is_regular_file(old))
    // A device or a pipe is written to, never replaced.
    reason = WriteStraight(path, content);
  else if (fs::is_symlink(path, error) && fs::exists(old))
    // A link keeps pointing where the person put it: the file behind it is replaced.
    reason = Replace(fs::canonical(path, error), old, content);
  else
    reason = Replace(path, old, content);
  return reason.empty() ? "" : "\"" + path.string() + "\" could not be written: " + reason;
}

}  // namespace kestrin::base
