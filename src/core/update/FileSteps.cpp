// SPDX-License-Identifier: MIT
#include "update/FileSteps.h"

#include <string>

#include "base/PathText.h"

namespace kestrin::core::update {

namespace fs = std::filesystem;
using base::Failure;
using base::FailureKind;
using base::Quoted;

namespace {

/// What stands where a folder or one of those above it should be; "" when there is nothing but folders.
std::string InTheWay(const fs::path& folder) {
  for (fs::path path = folder; path.has_relative_path(); path = path.parent_path()) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(path, error);
    if (!fs::exists(status)) continue;
    // The first that is there: a link counts as what it leads to, if it leads anywhere.
    if (fs::is_directory(path, error)) return "";
    const std::string kind = fs::is_symlink(status) ? "link" : "file";
    return path == folder ? "a " + kind + " of that name is in the way"
                          : "the " + kind + " " + Quoted(path) + " is in the way";
  }
  return "";
}

}  // namespace

bool IsFile(const fs::path& path) {
  std::error_code ignored;
  return fs::is_regular_file(path, ignored);
}

Failure CouldNotWrite(const fs::path& path, const Failure& why) {
  return {why.kind, Quoted(path) + " could not be written: " + why.text};
}

base::Result<> MakeFolder(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (fs::is_directory(folder, error)) return {};
  const std::string inTheWay = InTheWay(folder);
  fs::create_directories(folder, error);
  const Failure why = inTheWay.empty() ? base::FailureOf(error) : Failure{FailureKind::InTheWay, inTheWay};
  return Failure{why.kind, "The folder " + Quoted(folder) + " could not be made: " + why.text};
}

base::Result<> RemoveFile(const fs::path& path) {
  std::error_code error;
  fs::remove(path, error);
  if (!error) return {};
  std::error_code ignored;
  const Failure why = fs::is_directory(path, ignored)
                          ? Failure{FailureKind::InTheWay, "a folder of that name is in the way"}
                          : base::FailureOf(error);
  return Failure{why.kind, Quoted(path) + " could not be removed: " + why.text};
}

}  // namespace kestrin::core::update
