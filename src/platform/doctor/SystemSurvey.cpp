// SPDX-License-Identifier: MIT
#include "platform/doctor/SystemSurvey.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

#include "core/base/Text.h"
#include "core/device/Protocol.h"
#include "platform/doctor/AccessOf.h"
#include "platform/doctor/BusListing.h"
#include "platform/doctor/NodeUsers.h"
#include "platform/doctor/RuleFile.h"
#include "platform/hid/BoardList.h"
#include "platform/hid/BoardLock.h"
#include "platform/hid/HidLibrary.h"
#include "platform/hid/KernelFile.h"
#include "platform/hid/NodeIdentity.h"
#include "platform/hid/NodeListing.h"

namespace kestrin::platform::doctor {

namespace fs = std::filesystem;

namespace {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;
using core::doctor::LinkFacts;
using core::doctor::LinkNode;

Result<> TryToOpen(const std::string& path) {
  // Between two looks its path may have gone to another device, which must not be opened.
  const auto isBoard = [&path] {
    return hid::IsNodeOf(path, core::device::kBoardVendorId, core::device::kBoardProductId);
  };
  if (hid::IsBoardLocked(path, isBoard)) return Failure{FailureKind::InUse, ""};
  if (!isBoard()) return Failure{FailureKind::NotFound, ""};
  const Result<hid::NodeIdentity> probed = hid::ProbeNode(path);
  return probed ? Result<>() : probed.Why();
}

/// Room for what the system knows of a user or a group.
using Room = std::array<char, 4096>;

std::string NameOfUser(uid_t id) {
  Room room{};
  passwd entry{};
  passwd* found = nullptr;
  if (::getpwuid_r(id, &entry, room.data(), room.size(), &found) == 0 && found != nullptr) return entry.pw_name;
  return std::to_string(id);
}

std::string NameOfGroup(gid_t id) {
  Room room{};
  group entry{};
  group* found = nullptr;
  if (::getgrgid_r(id, &entry, room.data(), room.size(), &found) == 0 && found != nullptr) return entry.gr_name;
  return std::to_string(id);
}

/// "crw-rw----+ root plugdev", as lists of files have it; the "+" stands for permissions of single people.
std::string PermissionsOf(const fs::path& node) {
  struct stat status {};
  if (::stat(node.c_str(), &status) < 0) return "";
  constexpr std::string_view kAll = "rwxrwxrwx";
  std::string text(1, S_ISCHR(status.st_mode) ? 'c' : '-');
  for (std::size_t i = 0; i < kAll.size(); ++i)
    text += (status.st_mode >> (kAll.size() - 1 - i) & 1U) != 0 ? kAll[i] : '-';
  if (::getxattr(node.c_str(), "system.posix_acl_access", nullptr, 0) > 0) text += '+';
  return text + " " + NameOfUser(status.st_uid) + " " + NameOfGroup(status.st_gid);
}

/// What the system calls itself.
std::string NameOfSystem(const fs::path& root) {
  constexpr std::string_view kKey = "PRETTY_NAME=";
  for (const char* const file : {"etc/os-release", "usr/lib/os-release"}) {
    const std::string text = hid::ReadKernelFile(root / file).value_or("");
    for (std::string_view line : core::base::Split(text, "\n")) {
      if (!line.starts_with(kKey)) continue;
      line.remove_prefix(kKey.size());
      std::string name(line);
      std::erase(name, '"');
      return core::base::Shown(hid::Utf8Of(name));
    }
  }
  return "Linux";
}

/// Without the computer's own name.
std::vector<std::string> SystemLines(const fs::path& root) {
  std::vector<std::string> lines{NameOfSystem(root)};
  utsname names{};
  if (::uname(&names) == 0)
    lines.push_back(std::string(names.sysname) + " " + names.release + " " + names.version + " " + names.machine);
  lines.push_back(hid::HidLibrary());
  std::error_code error;
  lines.emplace_back(fs::exists(root / "run/udev/control", error) ? "udev is running" : "udev is not running");
  return lines;
}

}  // namespace

SystemSurvey::SystemSurvey(Surroundings surroundings) : m_surroundings(std::move(surroundings)) {
  if (!m_surroundings.open) m_surroundings.open = TryToOpen;
}

LinkFacts SystemSurvey::Look() {
  LinkFacts facts;
  const fs::path& root = m_surroundings.root;
  try {
    const FoundRule rule = FindRule(root);
    facts.rule = rule.state;
    facts.rulePath = rule.path;
    facts.system = SystemLines(root);
    facts.bus = ListBusDevices(core::device::kBoardVendorId, core::device::kBoardProductId, root);
    std::vector<hid::HidNode> nodes = hid::ListNodes(core::device::kBoardVendorId, core::device::kBoardProductId, root);
    std::sort(nodes.begin(), nodes.end(), hid::ComesBefore);
    for (const hid::HidNode& found : nodes) {
      const fs::path file = root / fs::path(found.path).relative_path();
      LinkNode node;
      node.path = found.path;
      node.product = found.product;
      const NodeUsers users = FindNodeUsers(file, root);
      node.isOurs = users.isOurs;
      node.user = users.others;
      const Result<> opened = node.isOurs ? Result<>() : m_surroundings.open(found.path);
      // Unplugged since it was listed.
      if (!opened && opened.Why().kind == FailureKind::NotFound) continue;
      node.access = AccessOf(opened);
      node.why = opened.Text();
      node.descriptor = hid::ReadNodeDescriptor(found.path, root);
      node.hasVariables = hid::HasBoardVariables(node.descriptor);
      node.permissions = PermissionsOf(file);
      facts.nodes.push_back(std::move(node));
    }
  } catch (const std::exception&) {
    // What has been seen until then is what there is to tell.
  }
  return facts;
}

}  // namespace kestrin::platform::doctor
