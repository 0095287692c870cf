// SPDX-License-Identifier: MIT
#include "platform/files/SystemDisk.h"

#include <gtest/gtest.h>

#include "support/TestFiles.h"

namespace kestrin::platform::files {
namespace {

TEST(SystemDisk, FlushesFilesAndFolders) {
  const support::TemporaryFolder folder;
  support::WriteBytes(folder / "a.txt", "x");
  SystemDisk disk;
  EXPECT_EQ(disk.Flush(folder / "a.txt"), std::error_code());
  EXPECT_EQ(disk.Flush(folder.Path()), std::error_code());
}

TEST(SystemDisk, SaysWhatCannotBeFlushed) {
  const support::TemporaryFolder folder;
  EXPECT_EQ(SystemDisk().Flush(folder / "missing"), std::errc::no_such_file_or_directory);
}

TEST(SystemDisk, GivesALockToOneAtATime) {
  const support::TemporaryFolder folder;
  SystemDisk disk;
  core::base::Disk::LockResult first = disk.TryLock(folder / "lock");
  EXPECT_TRUE(first.lock);
  EXPECT_FALSE(first.heldByAnother);

  const core::base::Disk::LockResult second = SystemDisk().TryLock(folder / "lock");
  EXPECT_FALSE(second.lock);
  EXPECT_TRUE(second.heldByAnother);
  EXPECT_EQ(second.error, std::error_code());
  EXPECT_TRUE(disk.TryLock(folder / "another lock").lock);

  first.lock.reset();
  EXPECT_TRUE(disk.TryLock(folder / "lock").lock);
}

TEST(SystemDisk, SaysWhyALockCannotBeAskedFor) {
  const support::TemporaryFolder folder;
  const core::base::Disk::LockResult missing = SystemDisk().TryLock(folder / "no such folder" / "lock");
  EXPECT_FALSE(missing.lock);
  EXPECT_FALSE(missing.heldByAnother);
  EXPECT_EQ(missing.error, std::errc::no_such_file_or_directory);
}

TEST(SystemDisk, GivesAFreeNameOnly) {
  const support::TemporaryFolder folder;
  SystemDisk disk;
  support::WriteBytes(folder / "made", "new");
  support::WriteBytes(folder / "taken", "old");
  EXPECT_EQ(disk.TakeFreeName(folder / "made", folder / "taken"), std::errc::file_exists);
  EXPECT_EQ(support::ReadBytes(folder / "taken"), "old");
  EXPECT_EQ(disk.TakeFreeName(folder / "made", folder / "free"), std::error_code());
  EXPECT_EQ(support::ReadBytes(folder / "free"), "new");
  EXPECT_FALSE(std::filesystem::exists(folder / "made"));
  EXPECT_EQ(disk.TakeFreeName(folder / "made", folder / "other"), std::errc::no_such_file_or_directory);
  EXPECT_FALSE(std::filesystem::exists(folder / "other"));
}

TEST(SystemDisk, GivesAFolderAFreeNameOnly) {
  const support::TemporaryFolder folder;
  SystemDisk disk;
  std::filesystem::create_directory(folder / "made");
  support::WriteBytes(folder / "made" / "a", "a");
  std::filesystem::create_directory(folder / "taken");
  EXPECT_EQ(disk.TakeFreeName(folder / "made", folder / "taken"), std::errc::file_exists) << "not even an empty one";
  EXPECT_EQ(disk.TakeFreeName(folder / "made", folder / "free"), std::error_code());
  EXPECT_EQ(support::ReadBytes(folder / "free" / "a"), "a");
}

}  // namespace
}  // namespace kestrin::platform::files
