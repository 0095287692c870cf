// SPDX-License-Identifier: MIT
#include "platform/hid/BoardLock.h"

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "support/TestFiles.h"

namespace kestrin::platform::hid {
namespace {

/// Notices when somebody opens a file.
class OpenWatch {
 public:
  explicit OpenWatch(const std::string& path) : m_file(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    EXPECT_GE(::inotify_add_watch(m_file, path.c_str(), IN_OPEN), 0);
  }
  ~OpenWatch() { ::close(m_file); }
  OpenWatch(const OpenWatch&) = delete;
  OpenWatch& operator=(const OpenWatch&) = delete;

  /// Since the last look.
  [[nodiscard]] bool Noticed() const {
    std::array<char, 4096> events{};
    return ::read(m_file, events.data(), events.size()) > 0;
  }

 private:
  int m_file;
};

// While the board of another program takes nothing, the kernel holds whoever opens one.
TEST(BoardLock, ABoardThatIsClaimedIsNotOpenedToFindOut) {
  const support::TemporaryFolder folder;
  const std::string path = support::WriteBytes(folder / "node", "").string();
  const OpenWatch watch(path);
  EXPECT_FALSE(IsBoardLocked(path));
  EXPECT_TRUE(watch.Noticed()) << "the watch sees nothing";
  BoardLock first = LockBoard(path);
  ASSERT_NE(first.lock, nullptr);
  EXPECT_TRUE(watch.Noticed());

  EXPECT_TRUE(IsBoardLocked(path));
  EXPECT_TRUE(LockBoard(path).heldByAnother);
  EXPECT_FALSE(watch.Noticed());

  first.lock.reset();
  EXPECT_FALSE(IsBoardLocked(path));
  EXPECT_NE(LockBoard(path).lock, nullptr);
}

TEST(BoardLock, TheClaimOnAnotherFileIsNoneOnThisOne) {
  const support::TemporaryFolder folder;
  const std::string path = support::WriteBytes(folder / "node", "").string();
  const BoardLock other = LockBoard(support::WriteBytes(folder / "other", "").string());
  ASSERT_NE(other.lock, nullptr);
  EXPECT_FALSE(IsBoardLocked(path));
  EXPECT_NE(LockBoard(path).lock, nullptr);
}

}  // namespace
}  // namespace kestrin::platform::hid
