// SPDX-License-Identifier: MIT
#include "platform/files/SystemDisk.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

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

TEST(SystemDisk, DoesNotWaitForTheOtherEndOfAPipe) {
  const support::TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_NE(SystemDisk().Flush(folder / "pipe"), std::error_code()) << "a pipe has nothing to flush";
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

  std::filesystem::create_symlink(folder / "elsewhere", folder / "link");
  EXPECT_TRUE(SystemDisk().TryLock(folder / "link").error);
  EXPECT_FALSE(std::filesystem::exists(folder / "elsewhere")) << "a link was written through";
}

TEST(SystemDisk, ExcludesAnotherProgramUntilThatIsKilled) {
  const support::TemporaryFolder folder;
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    const core::base::Disk::LockResult held = SystemDisk().TryLock(folder / "lock");
    const char answer = held.lock ? 'y' : 'n';
    (void)!::write(ready[1], &answer, 1);
    for (;;) ::pause();
  }
  char answer = '?';
  ASSERT_EQ(::read(ready[0], &answer, 1), 1);
  EXPECT_EQ(answer, 'y');
  EXPECT_TRUE(SystemDisk().TryLock(folder / "lock").heldByAnother);

  ASSERT_EQ(::kill(child, SIGKILL), 0);
  ASSERT_EQ(::waitpid(child, nullptr, 0), child);
  EXPECT_TRUE(SystemDisk().TryLock(folder / "lock").lock);
  ::close(ready[0]);
  ::close(ready[1]);
}

}  // namespace
}  // namespace kestrin::platform::files
