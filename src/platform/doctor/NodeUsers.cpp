// SPDX-License-Identifier: MIT
#include "platform/doctor/NodeUsers.h"

#include <sys/stat.h>

#include <map>
#include <optional>
#include <system_error>

#include "core/base/Text.h"
#include "platform/hid/KernelFile.h"

namespace kestrin::platform::doctor {

namespace fs = std::filesystem;

namespace {

std::optional<struct stat> StatusOf(const fs::path& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) < 0) return std::nullopt;
  return status;
}

/// By what the file is, not by its name: it may have several, and another one in another room of the system.
bool IsSame(const struct stat& a, const struct stat& b) {
  if (S_ISCHR(a.st_mode) && S_ISCHR(b.st_mode)) return a.st_rdev == b.st_rdev;
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool HasOpen(const fs::path& process, const struct stat& node) {
  std::error_code error;
  for (fs::directory_iterator entry(process / "fd", error), end; !error && entry != end; entry.increment(error)) {
    const std::optional<struct stat> open = StatusOf(entry->path());
    if (open && IsSame(*open, node)) return true;
  }
  return false;
}

/// The process that writes to boards for a program of this project. It ends with its program, so nobody is asked to
/// close it.
constexpr std::string_view kWriter = "kestrin-writer";

/// A program may call itself anything.
std::string NameOf(const fs::path& process) {
  constexpr std::size_t kLongest = 40;
  const std::string name = core::base::Shown(hid::ReadKernelLine(process / "comm"));
  return name.empty() ? "a program" : std::string(core::base::FirstCharacters(name, kLongest));
}

}  // namespace

NodeUsers FindNodeUsers(const fs::path& node, const fs::path& root) {
  NodeUsers users;
  const std::optional<struct stat> wanted = StatusOf(node);
  if (!wanted) return users;
  std::error_code error;
  const std::string self = fs::read_symlink(root / "proc/self", error).filename().string();
  users.isOurs = !self.empty() && HasOpen(root / "proc" / self, *wanted);

  std::map<int, std::string> others;
  for (fs::directory_iterator entry(root / "proc", error), end; !error && entry != end; entry.increment(error)) {
    const std::string id = entry->path().filename().string();
    constexpr std::size_t kLongestId = 9;
    const bool isProcess = id.find_first_not_of("0123456789") == id.npos && id.size() <= kLongestId;
    if (!isProcess || id == self || !HasOpen(entry->path(), *wanted)) continue;
    const std::string name = NameOf(entry->path());
    if (name != kWriter) others.emplace(std::stoi(id), name + " (" + id + ")");
  }
  for (const auto& [id, name] : others) users.others += (users.others.empty() ? "" : ", ") + name;
  return users;
}

}  // namespace kestrin::platform::doctor
