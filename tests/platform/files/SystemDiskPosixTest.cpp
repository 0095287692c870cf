// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/files/RegularFile.h"
#include "platform/files/SystemDisk.h"
#include "support/TestFiles.h"

// What takes pipes, links and processes as only some systems have them.

namespace kestrin::platform::files {
namespace {

TEST(SystemDisk, DoesNotWaitForTheOtherEndOfAPipe) {
  const support::TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_NE(SystemDisk().Flush(folder / "pipe"), std::error_code()) << "a pipe has nothing to flush";
}

TEST(RegularFile, IsNoPipeAndNoDevice) {
  const support::TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(RegularFile::Open(folder / "pipe").Text(), "it is a device or a pipe, no file") << "and nobody waited";
  EXPECT_FALSE(RegularFile::Open("/dev/zero"));
}

TEST(SystemDisk, TakesNoLockThroughALink) {
  const support::TemporaryFolder folder;
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
