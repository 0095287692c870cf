// SPDX-License-Identifier: MIT
#include "base/WholeFile.h"

#include <cerrno>
#include <fstream>
#include <string>
#include <system_error>

#include "base/Disk.h"
#include "base/PathText.h"
#include "base/TakeName.h"
#include "base/WriteBeside.h"
#ifdef _WIN32
#include "base/Text.h"
#include "base/WindowsName.h"
#endif

namespace kestrin::core::base {

namespace fs = std::filesystem;

namespace {

/// Writes and closes.
Result<> WriteStraight(const fs::path& path, const ContentInPieces& content) {
  int reason = 0;
  errno = 0;
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!file) reason = errno;
  Result<> given;
  if (file)
    given = content([&](std::string_view piece) {
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
  if (file) return given;
  const std::error_code error(reason, std::generic_category());
  return Failure{KindOf(error), error ? error.message() : "the disk refused it"};
}

Result<> Flush(Disk* disk, const fs::path& path) {
  if (disk == nullptr) return {};
  if (const std::error_code error = disk->Flush(path)) return FailureOf(error);
  return {};
}

/// Writes beside the file and takes its name.
Result<> Replace(const fs::path& path, const fs::file_status& old, const ContentInPieces& content, Disk* disk) {
  const Result<fs::path> written = WriteBeside(path.parent_path(), content);
  if (!written) return written.Why();
  const fs::path& beside = *written;
  const fs::path folder = path.has_parent_path() ? path.parent_path() : ".";
  std::error_code error;
  if (fs::exists(old)) fs::permissions(beside, old.permissions(), error);
  // Complete before it is named, and named before anybody relies on it.
  Result<> done = Flush(disk, beside);
  if (done) done = Flush(disk, folder);
  if (done) done = TakeName(beside, path);
  if (done) return Flush(disk, folder);
  fs::remove(beside, error);
  return done;
}

#ifdef _WIN32
/// The device that forgets what it is given. In a folder the name is refused: not every Windows means the device by it.
bool IsNowhere(const fs::path& path) { return EqualsIgnoringCase(TextOf(path), "NUL"); }

/// Why the system would not store the file under its name or not replace the old one, found before anything is written.
Result<> CheckName(const fs::path& path, const fs::file_status& old) {
  if (const std::string_view why = WhyNoWindowsName(TextOf(path.filename())); !why.empty())
    return Failure{FailureKind::NotValid, std::string(why)};
  if (fs::is_regular_file(old) && (old.permissions() & fs::perms::owner_write) == fs::perms::none)
    return Failure{FailureKind::NotPermitted, "it is marked as read-only; take that mark away first"};
  return {};
}
#else
bool IsNowhere(const fs::path&) { return false; }
Result<> CheckName(const fs::path&, const fs::file_status&) { return {}; }
#endif

/// Writes in the way that fits what is there; the text of a failure is the reason alone.
Result<> WriteOver(const fs::path& path, const ContentInPieces& content, Disk* disk) {
  std::error_code error;
  const fs::file_status old = fs::status(path, error);
  if (fs::is_directory(old)) return Failure{FailureKind::InTheWay, "a folder of that name is in the way"};
  if (IsNowhere(path)) return WriteStraight(path, content);
  if (Result<> named = CheckName(path, old); !named) return named;
  // A device or a pipe is written to, never replaced.
  if (fs::exists(old) && !fs::is_regular_file(old)) return WriteStraight(path, content);
  // A link keeps pointing where the person put it: the file behind it is replaced.
  if (fs::is_symlink(path, error) && fs::exists(old)) return Replace(fs::canonical(path, error), old, content, disk);
  return Replace(path, old, content, disk);
}

Result<> Write(const fs::path& path, const ContentInPieces& content, Disk* disk) {
  Result<> done = WriteOver(path, content, disk);
  if (done) return done;
  return Failure{done.Why().kind, Quoted(path) + " could not be written: " + done.Why().text};
}

ContentInPieces OnePiece(std::string_view content) {
  return [content](const AppendBytes& append) {
    static_cast<void>(append(content));
    return Result<>();
  };
}

}  // namespace

Result<> WriteWholeFile(const fs::path& path, std::string_view content, Disk& disk) {
  return Write(path, OnePiece(content), &disk);
}

Result<> WriteWholeFile(const fs::path& path, std::string_view content) {
  return Write(path, OnePiece(content), nullptr);
}

Result<> WriteWholeFile(const fs::path& path, const ContentInPieces& content, Disk& disk) {
  return Write(path, content, &disk);
}

Result<> WriteWholeFile(const fs::path& path, const ContentInPieces& content) { return Write(path, content, nullptr); }

}  // namespace kestrin::core::base
