// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <windows.h>
// After the line above, which it needs.
#include <knownfolders.h>
#include <shlobj.h>

#include <algorithm>

#include "platform/desktop/DesktopFolders.h"

namespace kestrin::platform::desktop {
namespace {

/// Where the system has put a folder, which need not be the person's own folder: OneDrive moves some.
std::filesystem::path Known(const GUID& id) {
  PWSTR path = nullptr;
  std::filesystem::path known;
  if (SHGetKnownFolderPath(id, 0, nullptr, &path) == S_OK) known = path;
  CoTaskMemFree(path);
  return known;
}

TEST(DesktopFoldersOnWindows, AreWhereTheSystemHasPutThem) {
  const DesktopFolders folders;
  // As the system writes them, backslashes and all.
  EXPECT_EQ(folders.Desktop().native(), Known(FOLDERID_Desktop).native());
  EXPECT_EQ(folders.Documents().native(), Known(FOLDERID_Documents).native());
}

TEST(DesktopFoldersOnWindows, DrivesHaveTheirLetters) {
  const DWORD letters = GetLogicalDrives();
  std::vector<std::string> expected;
  for (unsigned i = 0; i < 26; ++i)
    if ((letters >> i & 1U) != 0) expected.push_back(std::string(1, static_cast<char>('A' + i)) + ":");
  std::vector<std::string> names;
  for (const ui::kit::Drive& drive : DesktopFolders().Drives()) {
    names.push_back(drive.label);
    EXPECT_TRUE(drive.path.is_absolute()) << drive.label;
  }
  EXPECT_EQ(names, expected);
}

}  // namespace
}  // namespace kestrin::platform::desktop
