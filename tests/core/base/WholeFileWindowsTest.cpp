// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "core/base/WholeFile.h"
#include "support/TestFiles.h"

// What only Windows refuses.

namespace kestrin::core::base {
namespace {

using ::testing::EndsWith;
using ::testing::IsEmpty;
namespace fs = std::filesystem;

std::vector<fs::path> EntriesOf(const fs::path& folder) {
  std::vector<fs::path> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename());
  return names;
}

TEST(WriteWholeFileOnWindows, TellsThatAnotherProgramHasTheFileOpen) {
  const support::TemporaryFolder folder;
  const fs::path path = support::WriteBytes(folder / "a.lscfg", "old");
  const std::ifstream open(path);
  const Result<> written = WriteWholeFile(path, "new");
  ASSERT_FALSE(written);
  EXPECT_EQ(written.Why().kind, FailureKind::InUse);
  EXPECT_THAT(written.Text(),
              EndsWith("a.lscfg\" could not be written: another program has it open; close it there first"));
  EXPECT_EQ(support::ReadBytes(path), "old");
  EXPECT_EQ(EntriesOf(folder.Path()).size(), 1U) << "something is left beside it";
}

TEST(WriteWholeFileOnWindows, LeavesAFileAloneThatIsMarkedAsReadOnly) {
  const support::TemporaryFolder folder;
  const fs::path path = support::WriteBytes(folder / "a.lscfg", "old");
  fs::permissions(path, fs::perms::owner_write, fs::perm_options::remove);
  const Result<> written = WriteWholeFile(path, "new");
  ASSERT_FALSE(written);
  EXPECT_EQ(written.Why().kind, FailureKind::NotPermitted);
  EXPECT_THAT(written.Text(), EndsWith("it is marked as read-only; take that mark away first"));
  EXPECT_EQ(support::ReadBytes(path), "old");
  EXPECT_EQ(EntriesOf(folder.Path()).size(), 1U) << "something is left beside it";
  fs::permissions(path, fs::perms::owner_write, fs::perm_options::add);
}

TEST(WriteWholeFileOnWindows, WritesToTheDeviceThatForgets) {
  for (const char* const name : {"NUL", "nul"}) {
    bool written = false;
    const Result<> done = WriteWholeFile(name, [&](const AppendBytes& append) {
      written = append("x");
      return Result<>();
    });
    EXPECT_TRUE(done) << done.Text();
    EXPECT_TRUE(written);
  }
}

TEST(WriteWholeFileOnWindows, SaysThatAFolderIsInTheWayHoweverItIsSpelled) {
  const support::TemporaryFolder folder;
  for (const fs::path& path : {folder.Path(), folder / "", folder / "."}) {
    const Result<> written = WriteWholeFile(path, "x");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.Why().kind, FailureKind::InTheWay);
    EXPECT_THAT(written.Text(), EndsWith("could not be written: a folder of that name is in the way"));
  }
}

TEST(WriteWholeFileOnWindows, RefusesNamesThatWouldBeSomethingElse) {
  const support::TemporaryFolder folder;
  for (const char* const name : {"CON.lscfg", "nul", "set.", "set ", "set:stream", "a?b", "a|b"}) {
    const Result<> written = WriteWholeFile(folder / name, "x");
    ASSERT_FALSE(written) << name;
    EXPECT_EQ(written.Why().kind, FailureKind::NotValid) << name;
    EXPECT_THAT(written.Text(), EndsWith("; choose another one")) << name;
  }
  EXPECT_THAT(EntriesOf(folder.Path()), IsEmpty());
}

}  // namespace
}  // namespace kestrin::core::base
