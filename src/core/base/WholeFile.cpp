#include "base/WholeFile.h"

#include <cerrno>
#include <cstdint>
#include <fstream>
#include <optional>
#include <random>
#include <string>
#include <system_error>

#include "base/Disk.h"
#include "base/NewFile.h"
#include "base/PathText.h"

namespace kestrin::core::base {

namespace fs = std::filesystem;

namespace {

/// Names are drawn until one is free; with 64 bits the second is never needed, and a folder that refuses every name
/// says so instead.
constexpr int kDraws = 16;

/// A name beside `path` that nobody else draws. It does not grow with the file's own name, which may be as long as
/// names can be.
fs::path NameBeside(const fs::path& path, std::random_device& chance) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string name = ".kestrin-";
  for (int half = 0; half < 2; ++half) {
    std::uint32_t bits = chance();
    for (int digit = 0; digit < 8; ++digit, bits >>= 4) name += kDigits[bits & 0xF];
  }
  return path.parent_path() / (name + ".new");
}

/// Writes and closes; "" or why it failed.
std::string WriteStraight(const fs::path& path, const ContentInPieces& content) {
  int reason = 0;
  errno = 0;
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!file) reason = errno;
  std::string ungiven;
  if (file)
    ungiven = content([&](std::string_view piece) {
      if (!file) return false;
      errno = 0;
      file.write(piece.data(), static_cast<std::streamsize>(piece.size()));
      if (!file) reason = errno;
      return file.good();
    });
  if (file) {
    errno = 0;
    file.close();
    if (!file) reason = errno;
  }
  if (file) return ungiven;
  return reason != 0 ? std::generic_category().message(reason) : "the disk refused it";
}

std::string Flush(Disk* disk, const fs::path& path) {
  if (disk == nullptr) return "";
  const std::error_code error = disk->Flush(path);
  return error ? error.message() : "";
}

/// Fills the new file and closes it; "" or why it failed.
std::string Fill(NewFile& file, const ContentInPieces& content) {
  bool written = true;
  const std::string ungiven = content([&](std::string_view piece) { return written = written && file.Write(piece); });
  std::string reason = written ? ungiven : file.Reason();
  // Closed in any case: some systems remove no file that is open.
  if (!file.Close() && reason.empty()) reason = file.Reason();
  return reason;
}

/// Makes the file that `beside` is to name and writes it; "" or why it failed, and then there is none.
std::string WriteBeside(const fs::path& path, const ContentInPieces& content, fs::path& beside) {
  std::random_device chance;
  for (int draw = 1;; ++draw) {
    beside = NameBeside(path, chance);
    std::optional<NewFile> file(beside);
    if (!file->IsOpen() && file->WasThere() && draw < kDraws) continue;
    if (!file->IsOpen()) return file->Reason();
    std::error_code ignored;
    try {
      std::string reason = Fill(*file, content);
      if (!reason.empty()) fs::remove(beside, ignored);
      return reason;
    } catch (...) {
      // Whoever gives the content was stopped by the person.
      file.reset();
      fs::remove(beside, ignored);
      throw;
    }
  }
}

/// Writes beside the file and takes its name; "" or why it failed.
std::string Replace(const fs::path& path, const fs::file_status& old, const ContentInPieces& content, Disk* disk) {
  fs::path beside;
  std::string reason = WriteBeside(path, content, beside);
  if (!reason.empty()) return reason;
  const fs::path folder = path.has_parent_path() ? path.parent_path() : ".";
  std::error_code error;
  if (fs::exists(old)) fs::permissions(beside, old.permissions(), error);
  // Complete before it is named, and named before anybody relies on it.
  reason = Flush(disk, beside);
  if (reason.empty()) reason = Flush(disk, folder);
  if (reason.empty()) {
    fs::rename(beside, path, error);
    if (!error) return Flush(disk, folder);
    reason = error.message();
  }
  fs::remove(beside, error);
  return reason;
}

std::string Write(const fs::path& path, const ContentInPieces& content, Disk* disk) {
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
    reason = Replace(fs::canonical(path, error), old, content, disk);
  else
    reason = Replace(path, old, content, disk);
  return reason.empty() ? "" : "\"" + TextOf(path) + "\" could not be written: " + reason;
}

ContentInPieces OnePiece(std::string_view content) {
  return [content](const AppendBytes& append) {
    static_cast<void>(append(content));
    return std::string();
  };
}

}  // namespace

std::string WriteWholeFile(const fs::path& path, std::string_view content, Disk& disk) {
  return Write(path, OnePiece(content), &disk);
}

std::string WriteWholeFile(const fs::path& path, std::string_view content) {
  return Write(path, OnePiece(content), nullptr);
}

std::string WriteWholeFile(const fs::path& path, const ContentInPieces& content, Disk& disk) {
  return Write(path, content, &disk);
}

std::string WriteWholeFile(const fs::path& path, const ContentInPieces& content) {
  return Write(path, content, nullptr);
}

}  // namespace kestrin::core::base
