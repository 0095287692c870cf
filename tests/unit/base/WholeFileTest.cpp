#include "base/WholeFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/TestFiles.h"

namespace kestrin::base {
namespace {

using ::testing::HasSubstr;

TEST(WriteWholeFile, WritesANewFileAndReplacesAnOldOne) {
  const support::TemporaryFolder folder;
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", "first content"), "");
  EXPECT_EQ(support::ReadBytes(folder / "a.txt"), "first content");
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", "second"), "");
  EXPECT_EQ(support::ReadBytes(folder / "a.txt"), "second");
}

TEST(WriteWholeFile, LeavesNothingElseInTheFolder) {
  const support::TemporaryFolder folder;
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", "x"), "");
  const std::filesystem::directory_iterator files(folder.Path());
  EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST(WriteWholeFile, NamesTheFileAndTheReasonWhenTheFolderIsMissing) {
  const support::TemporaryFolder folder;
  const std::string problem = WriteWholeFile(folder / "missing" / "a.txt", "x");
  EXPECT_THAT(problem, HasSubstr("a.txt"));
  EXPECT_THAT(problem, HasSubstr("could not be written"));
}

TEST(WriteWholeFile, DoesNotReplaceAFolder) {
  const support::TemporaryFolder folder;
  std::filesystem::create_directory(folder / "a.txt");
  EXPECT_THAT(WriteWholeFile(folder / "a.txt", "x"), HasSubstr("folder"));
  EXPECT_TRUE(std::filesystem::is_directory(folder / "a.txt"));
}

TEST(WriteWholeFile, LeavesAFileAloneThatHasTheNameBeside) {
  const support::TemporaryFolder folder;
  support::WriteBytes(folder / "a.txt.new", "somebody else's");
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", "mine"), "");
  EXPECT_EQ(support::ReadBytes(folder / "a.txt"), "mine");
  EXPECT_EQ(support::ReadBytes(folder / "a.txt.new"), "somebody else's");
}

TEST(WriteWholeFile, KeepsThePermissionsOfTheOldFile) {
  namespace fs = std::filesystem;
  const support::TemporaryFolder folder;
  support::WriteBytes(folder / "a.txt", "old");
  fs::permissions(folder / "a.txt", fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", "new"), "");
  EXPECT_EQ(fs::status(folder / "a.txt").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

#ifdef __linux__
TEST(WriteWholeFile, WritesToADeviceInsteadOfReplacingIt) {
  // The link stands for the device, so that a failure of this test leaves the device itself alone.
  const support::TemporaryFolder folder;
  std::filesystem::create_symlink("/dev/null", folder / "link");
  EXPECT_EQ(WriteWholeFile(folder / "link", "x"), "");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}
#endif

TEST(WriteWholeFile, WritesThroughALink) {
  const support::TemporaryFolder folder;
  support::WriteBytes(folder / "real.txt", "old");
  std::filesystem::create_symlink(folder / "real.txt", folder / "link.txt");
  EXPECT_EQ(WriteWholeFile(folder / "link.txt", "new"), "");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.txt"));
  EXPECT_EQ(support::ReadBytes(folder / "real.txt"), "new");
}

TEST(WriteWholeFile, KeepsTheOldFileWhenTheNewOneCannotBeWrittenBeside) {
  const support::TemporaryFolder folder;
  // The longest name that file systems take: a longer one beside it cannot be made.
  const std::string name(255, 'a');
  support::WriteBytes(folder / name, "old");
  EXPECT_NE(WriteWholeFile(folder / name, "new"), "");
  EXPECT_EQ(support::ReadBytes(folder / name), "old");
}

}  // namespace
}  // namespace kestrin::base
