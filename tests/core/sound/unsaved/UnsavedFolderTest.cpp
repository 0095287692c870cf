// SPDX-License-Identifier: MIT
#include "core/sound/unsaved/UnsavedFolder.h"

#include <gmock/gmock.h>

#include <chrono>
#include <string>
#include <vector>

#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;
using std::chrono::hours;
using support::ReadBytes;
using support::WriteBytes;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A set with that boot sound, whose file is `origin`.
std::string Set(const std::string& boot, const std::string& origin = "") {
  return "BOOT\r\n" + boot +
         "\r\n 100\r\nPWRON\r\n\r\n 100\r\nPWROFF\r\n\r\n 100\r\nIDLE\r\n\r\n 100\r\nMOTION-0\r\nIMPACT-0\r\nLOCKUP-0"
         "\r\nUNSAVED CHANGES OF " +
         origin + "\r\nEND OF THE UNSAVED SET\r\n";
}

class UnsavedFolderTest : public testing::Test {
 protected:
  UnsavedFolderTest() { disk.locksAreFiles = true; }

  /// A program that has kept this and then ends without a word.
  fs::path LeftBehind(const std::string& content) {
    UnsavedFolder program(place, disk);
    EXPECT_TRUE(program.Keep(content));
    return Files(".lscfg").back();
  }
  [[nodiscard]] std::vector<fs::path> Files(const std::string& ending) const {
    std::vector<fs::path> files;
    if (fs::exists(place))
      for (const auto& entry : fs::directory_iterator(place))
        if (entry.path().extension() == ending) files.push_back(entry.path());
    return files;
  }
  [[nodiscard]] std::vector<std::string> NamesOf(const std::vector<UnsavedFolder::Left>& left) const {
    std::vector<std::string> names;
    for (const UnsavedFolder::Left& set : left) names.push_back(set.set.Name());
    return names;
  }

  support::TemporaryFolder folder;
  fs::path place = folder / "data" / "unsaved";
  support::RecordingDisk disk;
};

TEST_F(UnsavedFolderTest, MakesNothingBeforeSomethingIsKept) {
  UnsavedFolder program(place, disk);
  EXPECT_THAT(program.Find(), IsEmpty());
  program.Forget();
  EXPECT_FALSE(fs::exists(folder / "data"));
}

TEST_F(UnsavedFolderTest, KeepsTheLatestInOneFileForcedOntoTheDisk) {
  UnsavedFolder program(place, disk);
  ASSERT_TRUE(program.Keep(Set("/a.lsu")));
  const std::vector<fs::path> first = Files(".lscfg");
  ASSERT_THAT(first, SizeIs(1));
  EXPECT_EQ(ReadBytes(first[0]), Set("/a.lsu"));
  EXPECT_THAT(disk.flushed, testing::Contains(place));
  EXPECT_THAT(disk.flushed, testing::Contains(place.parent_path())) << "the folder is new";
  ASSERT_TRUE(program.Keep(Set("/b.lsu")));
  EXPECT_THAT(Files(".lscfg"), ElementsAre(first[0]));
  EXPECT_EQ(ReadBytes(first[0]), Set("/b.lsu"));
  program.Forget();
  EXPECT_TRUE(fs::is_empty(place));
}

TEST_F(UnsavedFolderTest, OffersWhatAProgramLeftThatHasEnded) {
  const fs::path file = LeftBehind(Set("/a.lsu", "/sets/Deep Forge.lscfg"));
  UnsavedFolder next(place, disk);
  const std::vector<UnsavedFolder::Left> left = next.Find();
  ASSERT_THAT(NamesOf(left), ElementsAre("Deep Forge"));
  EXPECT_EQ(left[0].file, file);
  EXPECT_EQ(left[0].set.Origin(), "/sets/Deep Forge.lscfg");
}

TEST_F(UnsavedFolderTest, LeavesAloneWhatARunningProgramHas) {
  UnsavedFolder running(place, disk);
  ASSERT_TRUE(running.Keep(Set("/a.lsu")));
  EXPECT_THAT(UnsavedFolder(place, disk).Find(), IsEmpty());
  ASSERT_TRUE(running.Keep(Set("/b.lsu")));
  EXPECT_THAT(Files(".lscfg"), SizeIs(1));
}

TEST_F(UnsavedFolderTest, TwoProgramsAtOnceHaveAFileEach) {
  UnsavedFolder one(place, disk);
  UnsavedFolder other(place, disk);
  ASSERT_TRUE(one.Keep(Set("/one.lsu")));
  ASSERT_TRUE(other.Keep(Set("/other.lsu")));
  EXPECT_THAT(Files(".lscfg"), SizeIs(2));
  one.Forget();
  const std::vector<fs::path> stays = Files(".lscfg");
  ASSERT_THAT(stays, SizeIs(1));
  EXPECT_EQ(ReadBytes(stays[0]), Set("/other.lsu"));
}

TEST_F(UnsavedFolderTest, OffersToOneProgramAtATimeAndAgainWhenThatOneLeftIt) {
  LeftBehind(Set("/a.lsu"));
  UnsavedFolder one(place, disk);
  UnsavedFolder other(place, disk);
  {
    const auto left = one.Find();
    ASSERT_THAT(left, SizeIs(1));
    EXPECT_THAT(other.Find(), IsEmpty());
  }
  EXPECT_THAT(other.Find(), SizeIs(1));
}

TEST_F(UnsavedFolderTest, OffersTheLatestFirst) {
  const auto now = fs::file_time_type::clock::now();
  fs::last_write_time(LeftBehind(Set("/a.lsu", "/middle.lscfg")), now - hours(2));
  std::vector<fs::path> before = Files(".lscfg");
  const auto add = [&](const std::string& origin, hours age) {
    LeftBehind(Set("/a.lsu", origin));
    for (const fs::path& file : Files(".lscfg"))
      if (std::find(before.begin(), before.end(), file) == before.end()) fs::last_write_time(file, now - age);
    before = Files(".lscfg");
  };
  add("/oldest.lscfg", hours(3));
  add("/latest.lscfg", hours(1));
  EXPECT_THAT(NamesOf(UnsavedFolder(place, disk).Find()), ElementsAre("latest", "middle", "oldest"));
}

TEST_F(UnsavedFolderTest, WhatIsTakenOverIsReplacedByTheNextKeptAndStaysUntilThen) {
  const fs::path file = LeftBehind(Set("/a.lsu"));
  UnsavedFolder next(place, disk);
  auto left = next.Find();
  ASSERT_THAT(left, SizeIs(1));
  next.TakeOver(std::move(left[0]));
  EXPECT_EQ(ReadBytes(file), Set("/a.lsu"));
  EXPECT_THAT(UnsavedFolder(place, disk).Find(), IsEmpty());
  ASSERT_TRUE(next.Keep(Set("/b.lsu")));
  EXPECT_THAT(Files(".lscfg"), ElementsAre(file));
  EXPECT_EQ(ReadBytes(file), Set("/b.lsu"));
  next.Forget();
  EXPECT_TRUE(fs::is_empty(place));
}

TEST_F(UnsavedFolderTest, WhatNobodyWantsIsRemoved) {
  LeftBehind(Set("/a.lsu"));
  UnsavedFolder next(place, disk);
  auto left = next.Find();
  ASSERT_THAT(left, SizeIs(1));
  UnsavedFolder::Remove(std::move(left[0]));
  EXPECT_TRUE(fs::is_empty(place));
}

TEST_F(UnsavedFolderTest, ClearsAwayWhatWasSavedAfterAll) {
  const std::string origin = (folder / "mine.lscfg").string();
  const std::string content = Set("/a.lsu", origin);
  WriteBytes(origin, content.substr(0, content.find("UNSAVED")));
  LeftBehind(content);
  EXPECT_THAT(UnsavedFolder(place, disk).Find(), IsEmpty());
  EXPECT_TRUE(fs::is_empty(place));
  EXPECT_TRUE(fs::exists(origin));
}

TEST_F(UnsavedFolderTest, TellsWhenTheSetsOwnFileIsNewer) {
  const fs::path origin = WriteBytes(folder / "mine.lscfg", "BOOT\r\n");
  const fs::path file = LeftBehind(Set("/a.lsu", origin.string()));
  fs::last_write_time(origin, fs::last_write_time(file) - hours(1));
  EXPECT_FALSE(UnsavedFolder(place, disk).Find().at(0).isOriginNewer);
  fs::last_write_time(origin, fs::last_write_time(file) + hours(1));
  EXPECT_TRUE(UnsavedFolder(place, disk).Find().at(0).isOriginNewer);
  fs::remove(origin);
  EXPECT_FALSE(UnsavedFolder(place, disk).Find().at(0).isOriginNewer);
}

TEST_F(UnsavedFolderTest, LeavesTornAndForeignFilesAsTheyAre) {
  fs::create_directories(place / "unsaved-folder.lscfg");
  const std::string whole = Set("/a.lsu");
  WriteBytes(place / "unsaved-0000000000000001.lscfg", whole.substr(0, whole.size() / 2));
  WriteBytes(place / "unsaved-0000000000000002.lscfg", std::string(whole.size(), '\0'));
  WriteBytes(place / "unsaved-0000000000000003.lscfg", "");
  WriteBytes(place / "mine.lscfg", whole);
  WriteBytes(place / "unsaved-letter.txt", whole);
  WriteBytes(folder / "elsewhere.lscfg", whole);
  fs::create_symlink(folder / "elsewhere.lscfg", place / "unsaved-0000000000000004.lscfg");
  UnsavedFolder program(place, disk);
  EXPECT_THAT(program.Find(), IsEmpty());
  ASSERT_TRUE(program.Keep(whole));
  program.Forget();
  EXPECT_EQ(Files(".lscfg").size(), 6U);
  EXPECT_EQ(ReadBytes(place / "unsaved-0000000000000001.lscfg"), whole.substr(0, whole.size() / 2));
  EXPECT_TRUE(fs::exists(place / "unsaved-letter.txt"));
  EXPECT_TRUE(fs::exists(folder / "elsewhere.lscfg"));
}

TEST_F(UnsavedFolderTest, KeepsWhatItHadWhenTheDiskIsFullAndSaysWhy) {
  UnsavedFolder program(place, disk);
  ASSERT_TRUE(program.Keep(Set("/a.lsu")));
  disk.onFlush = [](const fs::path&) { return std::make_error_code(std::errc::no_space_on_device); };
  const base::Result<> refused = program.Keep(Set("/b.lsu"));
  EXPECT_EQ(refused.Why().kind, base::FailureKind::DiskFull);
  EXPECT_NE(refused.Text(), "");
  EXPECT_EQ(ReadBytes(Files(".lscfg").at(0)), Set("/a.lsu"));
  EXPECT_THAT(Files(".new"), IsEmpty());
}

// Without its lock a set looks left, and two programs would have it.
TEST_F(UnsavedFolderTest, ItsSetStaysItsOwnWhenSomebodyClearsTheFolderUp) {
  UnsavedFolder program(place, disk);
  ASSERT_TRUE(program.Keep(Set("/a.lsu")));
  fs::remove_all(place);
  ASSERT_TRUE(program.Keep(Set("/b.lsu")));
  EXPECT_THAT(Files(".lscfg"), SizeIs(1));
  EXPECT_THAT(UnsavedFolder(place, disk).Find(), IsEmpty());
  fs::remove(Files(".lock").at(0));
  ASSERT_TRUE(program.Keep(Set("/c.lsu")));
  EXPECT_THAT(UnsavedFolder(place, disk).Find(), IsEmpty());
  EXPECT_THAT(Files(".lscfg"), SizeIs(1));
  program.Forget();
  EXPECT_TRUE(fs::is_empty(place));
}

TEST_F(UnsavedFolderTest, SaysWhyNothingCanBeKept) {
  WriteBytes(folder / "data", "a file where the folder should be");
  EXPECT_NE(UnsavedFolder(place, disk).Keep(Set("/a.lsu")).Text(), "");
  fs::remove(folder / "data");
  disk.lockError = std::make_error_code(std::errc::permission_denied);
  EXPECT_EQ(UnsavedFolder(place, disk).Keep(Set("/a.lsu")).Why().kind, base::FailureKind::NotPermitted);
}

}  // namespace
}  // namespace kestrin::core::sound
