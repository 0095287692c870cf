// SPDX-License-Identifier: MIT
#include "core/update/FontDownload.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <system_error>

#include "core/update/SmallDisk.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::core::update {
namespace {

using base::FailureKind;
using support::ReadBytes;
using support::WriteBytes;
using testing::EndsWith;
using testing::FieldsAre;
namespace fs = std::filesystem;

class FontDownloadTest : public testing::Test {
 protected:
  static fs::path Made(const fs::path& path) {
    fs::create_directories(path);
    return path;
  }
  [[nodiscard]] bool Has(const char* name) const { return fs::exists(fs::symlink_status(own / name)); }

  support::TemporaryFolder folder;
  fs::path own = Made(folder / "own");
  support::RecordingDisk disk;
  FontDownload download{own, "a.lsu", disk};
};

TEST_F(FontDownloadTest, IsCalledTmpUntilItIsWholeAndOnTheDisk) {
  EXPECT_FALSE(Has("tmp")) << "nobody has answered yet";
  ASSERT_TRUE(download.Begin());
  std::string sum;
  // 81920 bytes: more than are written at once.
  for (const char piece : std::string("abcdefghij")) {
    const std::string bytes(8192, piece);
    sum += bytes;
    ASSERT_TRUE(download.Take(bytes));
    EXPECT_TRUE(Has("tmp"));
    EXPECT_FALSE(Has("a.lsu"));
  }
  disk.onFlush = [&](const fs::path& path) {
    EXPECT_EQ(path, own / "tmp");
    EXPECT_EQ(ReadBytes(path), sum);
    EXPECT_FALSE(Has("a.lsu"));
    return std::error_code();
  };
  ASSERT_TRUE(download.Finish());
  EXPECT_EQ(disk.flushed.size(), 1U);
  EXPECT_EQ(ReadBytes(own / "a.lsu"), sum);
  EXPECT_FALSE(Has("tmp"));
}

TEST_F(FontDownloadTest, WhatIsDroppedLeavesNothing) {
  download.Drop();
  ASSERT_TRUE(download.Begin());
  ASSERT_TRUE(download.Take("half"));
  download.Drop();
  EXPECT_TRUE(fs::is_empty(own));
}

TEST_F(FontDownloadTest, AnOldDownloadOrALinkOfThatNameGivesWay) {
  WriteBytes(folder / "mine", "mine");
  for (const bool link : {false, true}) {
    if (link)
      fs::create_symlink(folder / "mine", own / "tmp");
    else
      WriteBytes(own / "tmp", "an old one");
    FontDownload next(own, "a.lsu", disk);
    ASSERT_TRUE(next.Begin());
    ASSERT_TRUE(next.Take("new"));
    ASSERT_TRUE(next.Finish());
    EXPECT_EQ(ReadBytes(own / "a.lsu"), "new");
    EXPECT_FALSE(fs::is_symlink(own / "a.lsu"));
  }
  EXPECT_EQ(ReadBytes(folder / "mine"), "mine");
}

// The folder was looked at before the server was asked; a link may have come since.
TEST_F(FontDownloadTest, AFolderThatIsALinkFromTheBeginningGetsNothing) {
  fs::create_directories(folder / "elsewhere");
  fs::create_directory_symlink(folder / "elsewhere", folder / "font");
  FontDownload linked(folder / "font", "a.lsu", disk);
  EXPECT_EQ(linked.Begin().Why().kind, FailureKind::Changed);
  linked.Drop();
  EXPECT_TRUE(fs::is_empty(folder / "elsewhere"));
}

TEST_F(FontDownloadTest, AFolderThatWasExchangedGetsNothingAndLosesNothing) {
  const fs::path elsewhere = folder / "elsewhere";
  fs::create_directories(elsewhere);
  WriteBytes(elsewhere / "tmp", "mine");
  const auto exchange = [&] {
    fs::rename(own, folder / "moved");
    fs::create_directory_symlink(elsewhere, own);
  };
  const auto back = [&] {
    fs::remove(own);
    fs::rename(folder / "moved", own);
  };
  const auto moved = FieldsAre(FailureKind::Changed, EndsWith("own\" has become another folder meanwhile"));
  exchange();
  EXPECT_THAT(download.Begin().Why(), moved);
  back();
  ASSERT_TRUE(download.Begin());
  ASSERT_TRUE(download.Take("new"));
  exchange();
  EXPECT_THAT(download.Finish().Why(), moved);
  download.Drop();
  EXPECT_EQ(ReadBytes(elsewhere / "tmp"), "mine");
  EXPECT_EQ(std::distance(fs::directory_iterator(elsewhere), fs::directory_iterator()), 1);
}

TEST_F(FontDownloadTest, WhatGoesWrongHasItsKind) {
  struct Row {
    std::errc error;
    FailureKind kind;
  };
  const Row table[] = {{std::errc::no_space_on_device, FailureKind::DiskFull},
                       {std::errc::permission_denied, FailureKind::NotPermitted},
                       {std::errc::io_error, FailureKind::Failed}};
  for (const Row& row : table) {
    disk.onFlush = [&](const fs::path&) { return std::make_error_code(row.error); };
    FontDownload next(own, "a.lsu", disk);
    ASSERT_TRUE(next.Begin());
    EXPECT_THAT(next.Finish().Why(), FieldsAre(row.kind, EndsWith("tmp\" could not be written: " +
                                                                  std::make_error_code(row.error).message())));
    EXPECT_FALSE(Has("a.lsu"));
  }
  disk.onFlush = nullptr;
  fs::create_directories(own / "a.lsu");
  ASSERT_TRUE(download.Begin());
  EXPECT_THAT(
      download.Finish().Why(),
      FieldsAre(FailureKind::InTheWay, EndsWith("a.lsu\" could not be written: a folder of that name is in the way")));
  EXPECT_THAT(FontDownload(folder / "missing", "a.lsu", disk).Begin().Why().kind, FailureKind::NotFound);
}

TEST_F(FontDownloadTest, NobodyElsesFileGetsTheName) {
  ASSERT_TRUE(download.Begin());
  ASSERT_TRUE(download.Take("four"));
  fs::remove(own / "tmp");
  WriteBytes(own / "tmp", "three");
  EXPECT_THAT(download.Finish().Why(),
              FieldsAre(FailureKind::Changed, EndsWith("tmp\" has become another file meanwhile")));
  EXPECT_FALSE(Has("a.lsu"));
}

#ifdef __linux__
TEST_F(FontDownloadTest, ADiskThatRefusesBytesIsToldOf) {
  ASSERT_TRUE(download.Begin());
  const support::SmallDisk small(10);
  // Gathered first: the disk is asked once there is enough.
  ASSERT_TRUE(download.Take(std::string(65535, 'x')));
  EXPECT_THAT(download.Take("x").Text(), EndsWith("tmp\" could not be written: File too large"));
  EXPECT_FALSE(Has("a.lsu"));
}
#endif

}  // namespace
}  // namespace kestrin::core::update
