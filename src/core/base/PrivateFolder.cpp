// SPDX-License-Identifier: MIT
#include "base/PrivateFolder.h"

#include <system_error>
#include <utility>

#include "base/NameBeside.h"
#include "base/PathText.h"

namespace kestrin::core::base {

namespace fs = std::filesystem;

Result<PrivateFolder> PrivateFolder::Make(const fs::path& place) {
  std::error_code error;
  const fs::path below = place.empty() ? fs::temp_directory_path(error) : place;
  const auto failed = [&] {
    const Failure why = FailureOf(error);
    return Failure{why.kind, "No folder could be made below " + Quoted(below) + ": " + why.text + "."};
  };
  if (error) return failed();
  const fs::path path = NameBeside(below / "folder");
  if (!fs::create_directory(path, error)) {
    if (!error) error = std::make_error_code(std::errc::file_exists);
    return failed();
  }
  PrivateFolder folder(path);
  fs::permissions(path, fs::perms::owner_all, error);
  if (error) return failed();
  return folder;
}

PrivateFolder::~PrivateFolder() { Remove(); }

PrivateFolder::PrivateFolder(PrivateFolder&& other) noexcept : m_path(std::move(other.m_path)) { other.m_path.clear(); }

PrivateFolder& PrivateFolder::operator=(PrivateFolder&& other) noexcept {
  if (this == &other) return *this;
  Remove();
  m_path = std::move(other.m_path);
  other.m_path.clear();
  return *this;
}

void PrivateFolder::Remove() {
  std::error_code ignored;
  if (!m_path.empty()) fs::remove_all(m_path, ignored);
}

}  // namespace kestrin::core::base
