// SPDX-License-Identifier: MIT
#include "platform/archive/ZipArchives.h"

#include <system_error>

#include "core/base/NameBeside.h"
#include "core/base/NewFile.h"
#include "core/base/PathText.h"
#include "core/base/WindowsName.h"
#include "platform/archive/ZipCalls.h"
#include "platform/archive/ZipReader.h"
#include "platform/archive/ZipWriter.h"

namespace kestrin::platform::archive {

namespace fs = std::filesystem;

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

namespace {

Failure NoLibrary() {
  return {FailureKind::NotFound, "the library for ZIP files is missing. Install it (on Debian: libzip5 or libzip4)"};
}

Failure IsThereAlready() { return {FailureKind::InTheWay, "there is one of that name already. Choose another name"}; }

/// Whether the file can have its name, before anything is written.
Result<> CheckName(const fs::path& path) {
#ifdef _WIN32
  if (const std::string_view why = core::base::WhyNoWindowsName(core::base::TextOf(path.filename())); !why.empty())
    return Failure{FailureKind::NotValid, std::string(why)};
#endif
  std::error_code error;
  if (fs::exists(fs::symlink_status(path, error))) return IsThereAlready();
  return {};
}

/// Complete before it is named, and named before anybody relies on it.
Result<> Name(const fs::path& made, const fs::path& path, core::base::Disk& disk) {
  const fs::path folder = path.has_parent_path() ? path.parent_path() : ".";
  if (const std::error_code error = disk.Flush(made)) return core::base::FailureOf(error);
  if (const std::error_code error = disk.TakeFreeName(made, path))
    return error == std::errc::file_exists ? IsThereAlready() : core::base::FailureOf(error);
  if (const std::error_code error = disk.Flush(folder)) return core::base::FailureOf(error);
  return {};
}

}  // namespace

Result<std::unique_ptr<core::base::Archive>> ZipArchives::Open(const fs::path& path) {
  Result<std::unique_ptr<core::base::Archive>> opened = NoLibrary();
  if (IsZipLibraryThere()) opened = ZipReader::Open(path);
  if (opened) return opened;
  return Failure{opened.Why().kind, core::base::Quoted(path) + " could not be read: " + opened.Why().text + "."};
}

Result<> ZipArchives::Write(const fs::path& path, const std::vector<core::base::ArchiveItem>& items,
                            const std::function<void()>& pump) {
  const auto failed = [&](const Failure& why) {
    return Failure{why.kind, core::base::Quoted(path) + " could not be written: " + why.text + "."};
  };
  if (!IsZipLibraryThere()) return failed(NoLibrary());
  if (const Result<> named = CheckName(path); !named) return failed(named.Why());
  const fs::path made = core::base::NameBeside(path);
  core::base::NewFile file(made);
  if (!file.IsOpen() || !file.Close()) return failed(file.Why());
  std::error_code ignored;
  try {
    Result<> done = WriteZip(made, items, pump);
    if (done) done = Name(made, path, m_disk);
    if (done) return done;
    fs::remove(made, ignored);
    return failed(done.Why());
  } catch (...) {
    // Whoever has its turn on the way was stopped by the person.
    fs::remove(made, ignored);
    throw;
  }
}

}  // namespace kestrin::platform::archive
