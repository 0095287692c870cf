#include "base/WholeFile.h"

#include <cerrno>
#include <fstream>
#include <system_error>

namespace kestrin::base {

namespace fs = std::filesystem;

std::string WriteWholeFile(const fs::path& path, std::string_view content) {
  const auto failed = [&](const std::string& reason) {
    return "\"" + path.string() + "\" could not be written: " + reason;
  };
  std::error_code error;
  if (fs::is_directory(path, error)) return failed("a folder of that name is in the way");
  // A link keeps pointing where the person put it: the file behind it is replaced.
  fs::path target = fs::is_symlink(path, error) ? fs::weakly_canonical(path, error) : path;
  if (error) target = path;
  fs::path beside = target;
  beside += ".new";

  errno = 0;
  std::ofstream file(beside, std::ios::binary | std::ios::trunc);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  file.close();
  if (file.fail()) {
    const int reason = errno;
    fs::remove(beside, error);
    return failed(reason != 0 ? std::generic_category().message(reason) : "the disk refused it");
  }
  fs::rename(beside, target, error);
  if (!error) return "";
  const std::string reason = error.message();
  fs::remove(beside, error);
  return failed(reason);
}

}  // namespace kestrin::base
