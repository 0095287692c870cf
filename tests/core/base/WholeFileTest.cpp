// SPDX-License-Identifier: MIT
#include "core/base/WholeFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::core::base {
namespace {

using ::testing::HasSubstr;

std::ptrdiff_t EntriesOf(const support::TemporaryFolder& folder) {
  const std::filesystem::directory_iterator files(folder.Path());
  return std::distance(begin(files), end(files));
}

TEST(WriteWholeFile, WritesANewFileAndReplacesAnOldOne) {
  const support::TemporaryFolder folder;
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", "first content").Text(), "");
  EXPECT_EQ(support::ReadBytes(folder / "a.txt"), "first content");
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", "second").Text(), "");
  EXPECT_EQ(support::ReadBytes(folder / "a.txt"), "second");
}

TEST(WriteWholeFile, LeavesNothingElseInTheFolder) {
  const support::TemporaryFolder folder;
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", "x").Text(), "");
  EXPECT_EQ(EntriesOf(folder), 1);
}

TEST(WriteWholeFile, NamesTheFileAndTheReasonWhenTheFolderIsMissing) {
  const support::TemporaryFolder folder;
  const Result<> written = WriteWholeFile(folder / "missing" / "a.txt", "x");
  ASSERT_FALSE(written);
  EXPECT_EQ(written.Why().kind, FailureKind::NotFound);
  const std::string problem = written.Text();
  EXPECT_THAT(problem, HasSubstr("a.txt"));
  EXPECT_THAT(problem, HasSubstr("could not be written"));
}

TEST(WriteWholeFile, DoesNotReplaceAFolder) {
  const support::TemporaryFolder folder;
  std::filesystem::create_directory(folder / "a.txt");
  const Result<> written = WriteWholeFile(folder / "a.txt", "x");
  ASSERT_FALSE(written);
  EXPECT_EQ(written.Why().kind, FailureKind::InTheWay);
  EXPECT_THAT(written.Text(), HasSubstr("folder"));
  EXPECT_TRUE(std::filesystem::is_directory(folder / "a.txt"));
}

TEST(WriteWholeFile, LeavesAFileAloneThatHasTheNameBeside) {
  const support::TemporaryFolder folder;
  support::WriteBytes(folder / "a.txt.new", "somebody else's");
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", "mine").Text(), "");
  EXPECT_EQ(support::ReadBytes(folder / "a.txt"), "mine");
  EXPECT_EQ(support::ReadBytes(folder / "a.txt.new"), "somebody else's");
}

#ifndef _WIN32
// Windows knows no more of them than whether a file may be written.
TEST(WriteWholeFile, KeepsThePermissionsOfTheOldFile) {
  namespace fs = std::filesystem;
  const support::TemporaryFolder folder;
  support::WriteBytes(folder / "a.txt", "old");
  fs::permissions(folder / "a.txt", fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", "new").Text(), "");
  EXPECT_EQ(fs::status(folder / "a.txt").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}
#endif

#ifdef __linux__
TEST(WriteWholeFile, WritesToADeviceInsteadOfReplacingIt) {
  // The link stands for the device, so that a failure of this test leaves the device itself alone.
  const support::TemporaryFolder folder;
  std::filesystem::create_symlink("/dev/null", folder / "link");
  EXPECT_EQ(WriteWholeFile(folder / "link", "x").Text(), "");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}
#endif

TEST(WriteWholeFile, WritesThroughALink) {
  const support::TemporaryFolder folder;
  support::WriteBytes(folder / "real.txt", "old");
  std::filesystem::create_symlink(folder / "real.txt", folder / "link.txt");
  EXPECT_EQ(WriteWholeFile(folder / "link.txt", "new").Text(), "");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.txt"));
  EXPECT_EQ(support::ReadBytes(folder / "real.txt"), "new");
}

TEST(WriteWholeFile, TakesTheLongestNameThatThereCanBe) {
  const support::TemporaryFolder folder;
  const std::string name(255, 'a');
  support::WriteBytes(folder / name, "old");
  support::RecordingDisk disk;
  EXPECT_EQ(WriteWholeFile(folder / name, "new", disk).Text(), "");
  EXPECT_EQ(support::ReadBytes(folder / name), "new");
}

TEST(WriteWholeFile, IsOnTheDiskBeforeItTakesTheName) {
  const support::TemporaryFolder folder;
  support::WriteBytes(folder / "a.txt", "old");
  support::RecordingDisk disk;
  std::vector<std::string> contents;
  std::string beside;
  disk.onFlush = [&](const std::filesystem::path& path) {
    contents.push_back(support::ReadBytes(folder / "a.txt"));
    if (contents.size() == 1) beside = support::ReadBytes(path);
    return std::error_code();
  };
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", "new", disk).Text(), "");
  ASSERT_EQ(disk.flushed.size(), 3U);
  EXPECT_EQ(disk.flushed[0].parent_path(), folder.Path());
  EXPECT_NE(disk.flushed[0], folder / "a.txt");
  EXPECT_EQ(beside, "new");
  // The folder is flushed with the new file in it, and again with the new name.
  EXPECT_EQ(disk.flushed[1], folder.Path());
  EXPECT_EQ(disk.flushed[2], folder.Path());
  EXPECT_THAT(contents, ::testing::ElementsAre("old", "old", "new"));
}

TEST(WriteWholeFile, FlushesTheWorkingFolderForABareName) {
  const support::TemporaryFolder folder;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  support::RecordingDisk disk;
  EXPECT_EQ(WriteWholeFile("a.txt", "x", disk).Text(), "");
  std::filesystem::current_path(before);
  ASSERT_EQ(disk.flushed.size(), 3U);
  EXPECT_EQ(disk.flushed[1], ".");
}

TEST(WriteWholeFile, KeepsTheOldFileWhenTheDiskFails) {
  const support::TemporaryFolder folder;
  support::WriteBytes(folder / "a.txt", "old");
  for (const std::size_t failing : {1U, 2U}) {
    support::RecordingDisk disk;
    disk.onFlush = [&](const std::filesystem::path&) {
      return disk.flushed.size() == failing ? std::make_error_code(std::errc::io_error) : std::error_code();
    };
    const std::string problem = WriteWholeFile(folder / "a.txt", "new", disk).Text();
    EXPECT_THAT(problem, HasSubstr("a.txt\" could not be written: "));
    EXPECT_THAT(problem, HasSubstr(std::make_error_code(std::errc::io_error).message()));
    EXPECT_EQ(support::ReadBytes(folder / "a.txt"), "old");
    EXPECT_EQ(EntriesOf(folder), 1) << "something is left beside it";
  }
}

TEST(WriteWholeFile, DoesNotMeetAnotherThatWritesTheSameFile) {
  const support::TemporaryFolder folder;
  support::RecordingDisk disk;
  support::RecordingDisk other;
  std::string second = "not written";
  disk.onFlush = [&](const std::filesystem::path&) {
    if (disk.flushed.size() == 1) second = WriteWholeFile(folder / "a.txt", "second", other).Text();
    return std::error_code();
  };
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", "first", disk).Text(), "");
  EXPECT_EQ(second, "");
  EXPECT_NE(disk.flushed[0], other.flushed[0]);
  EXPECT_EQ(support::ReadBytes(folder / "a.txt"), "first");
  EXPECT_EQ(EntriesOf(folder), 1);
}

TEST(WriteWholeFile, TakesItsContentInPieces) {
  const support::TemporaryFolder folder;
  support::RecordingDisk disk;
  const ContentInPieces threePieces = [](const AppendBytes& append) {
    EXPECT_TRUE(append("one, "));
    EXPECT_TRUE(append(""));
    EXPECT_TRUE(append("two"));
    return Result<>();
  };
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", threePieces, disk).Text(), "");
  EXPECT_EQ(support::ReadBytes(folder / "a.txt"), "one, two");
  EXPECT_EQ(disk.flushed.size(), 3U);
  EXPECT_EQ(WriteWholeFile(folder / "b.txt", threePieces).Text(), "");
  EXPECT_EQ(support::ReadBytes(folder / "b.txt"), "one, two");
}

TEST(WriteWholeFile, KeepsTheOldFileWhenTheContentEndsEarly) {
  const support::TemporaryFolder folder;
  support::WriteBytes(folder / "a.txt", "old");
  const ContentInPieces half = [](const AppendBytes& append) {
    EXPECT_TRUE(append("half"));
    return Failure{FailureKind::Changed, "the source has gone"};
  };
  EXPECT_EQ(WriteWholeFile(folder / "a.txt", half).Text(),
            "\"" + (folder / "a.txt").string() + "\" could not be written: the source has gone");
  EXPECT_EQ(support::ReadBytes(folder / "a.txt"), "old");
  const ContentInPieces stopped = [](const AppendBytes& append) -> Result<> {
    EXPECT_TRUE(append("half"));
    throw std::runtime_error("stopped");
  };
  EXPECT_THROW((void)WriteWholeFile(folder / "a.txt", stopped), std::runtime_error);
  EXPECT_EQ(support::ReadBytes(folder / "a.txt"), "old");
  EXPECT_EQ(EntriesOf(folder), 1) << "something is left beside it";
}

#ifdef __linux__
TEST(WriteWholeFile, TellsWhatADeviceDidNotTake) {
  const support::TemporaryFolder folder;
  std::filesystem::create_symlink("/dev/full", folder / "link");
  bool refused = false;
  const ContentInPieces endless = [&](const AppendBytes& append) {
    while (append(std::string(10000, 'x'))) {
    }
    refused = !append("x");
    return Result<>();
  };
  const Result<> written = WriteWholeFile(folder / "link", endless);
  ASSERT_FALSE(written);
  EXPECT_EQ(written.Why().kind, FailureKind::DiskFull);
  EXPECT_THAT(written.Text(), HasSubstr("No space left on device"));
  EXPECT_TRUE(refused);
}
#endif

}  // namespace
}  // namespace kestrin::core::base
