// SPDX-License-Identifier: MIT
#include "core/update/UpdateUtils.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/base/PathText.h"
#include "core/update/FontStore.h"
#include "core/update/StoredFonts.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::core::update {
namespace {

using support::ReadBytes;
using support::WriteBytes;
using testing::ElementsAre;
namespace fs = std::filesystem;

class UpdateUtilsTest : public testing::Test {
 protected:
  support::TemporaryFolder folder;
  fs::path fonts = folder / "fonts";
  support::RecordingDisk disk;
  FontStore store{fonts, disk};
  UpdateUtils utils{store};
};

TEST_F(UpdateUtilsTest, MakesTheFontsFolderAndLeavesTheWorkingFolderAlone) {
  EXPECT_TRUE(fs::is_directory(fonts));
  EXPECT_NE(fs::current_path(), fonts);
  utils.Initialize();
  EXPECT_TRUE(fs::is_empty(fonts));
  WriteBytes(fonts / "kept", "");
  const FontStore again(fonts, disk);
  EXPECT_TRUE(fs::exists(fonts / "kept"));
}

TEST(UpdateTextTest, SlicesAtEveryPairOfCarriageReturnAndLineFeed) {
  EXPECT_THAT(UpdateUtils::SliceText(""), ElementsAre());
  EXPECT_THAT(UpdateUtils::SliceText("a"), ElementsAre("a"));
  EXPECT_THAT(UpdateUtils::SliceText("\r\n"), ElementsAre("", ""));
  EXPECT_THAT(UpdateUtils::SliceText("a\r\nb\r\n"), ElementsAre("a", "b", ""));
  EXPECT_THAT(UpdateUtils::SliceText("a\nb\rc\r\r\nd\n\r"), ElementsAre("a\nb\rc\r", "d\n\r"));
}

TEST(UpdateTextTest, APairIsSplitAtItsFirstColon) {
  struct Row {
    const char* line;
    Association pair;
  };
  const Row table[] = {{"status:OK", {"status", "OK"}},
                       {"a:b:c", {"a", "b:c"}},
                       {"name:", {"name", ""}},
                       {":value", {}},
                       {":", {}},
                       {"", {}},
                       {"no colon", {}},
                       {" a : b ", {" a ", " b "}},
                       {"a::", {"a", ":"}},
                       {"x:y", {"x", "y"}}};
  for (const Row& row : table) EXPECT_EQ(UpdateUtils::ExtractPair(row.line), row.pair) << row.line;
}

TEST(UpdateTextTest, SoundsAreKnownByTheirEndingAnywhereInTheLine) {
  for (const char* const line : {"a.lsu", "A.LSU", "a.LsU", ".lsu", "a.lsu.bak", "x.lsu 100"})
    EXPECT_TRUE(UpdateUtils::NamesSound(line)) << line;
  for (const char* const line : {"", "BOOT", "lsu", "a.ls", ".ls", "a. lsu", "a.lzu"})
    EXPECT_FALSE(UpdateUtils::NamesSound(line)) << line;
}

TEST_F(UpdateUtilsTest, WritesDescriptorAndConfiguration) {
  ASSERT_TRUE(utils.CreateFont("Night"));
  const std::vector<std::string> lines = {"status:OK", "clientv:1", "one.lsu", " 100", "TWO.LSU"};
  ASSERT_TRUE(utils.WriteDescriptor("Night", lines));
  EXPECT_EQ(ReadBytes(fonts / "Night" / "descriptor"), "one.lsu\r\n 100\r\nTWO.LSU\r\n");
  const std::string own = base::TextOf(fonts / "Night" / "");
  EXPECT_EQ(ReadBytes(fonts / "Night" / "Night.lscfg"), own + "one.lsu\r\n 100\r\n" + own + "TWO.LSU\r\n");
  EXPECT_EQ(utils.ConfigurationOf("Night"), fonts / "Night" / "Night.lscfg");
  EXPECT_TRUE(fonts.is_absolute()) << "full paths, wherever the program is started";
}

TEST_F(UpdateUtilsTest, ATrailingEmptyLineIsWrittenAndOldFilesAreReplaced) {
  ASSERT_TRUE(utils.CreateFont("N"));
  ASSERT_TRUE(utils.WriteDescriptor("N", std::vector<std::string>{"", "", "a much longer first version.lsu"}));
  ASSERT_TRUE(utils.WriteDescriptor("N", std::vector<std::string>{"", "", "x", ""}));
  EXPECT_EQ(ReadBytes(fonts / "N" / "descriptor"), "x\r\n\r\n");
  EXPECT_EQ(ReadBytes(fonts / "N" / "N.lscfg"), "x\r\n\r\n");
  for (const std::size_t count : {0U, 1U, 2U}) {
    ASSERT_TRUE(utils.WriteDescriptor("N", std::vector<std::string>(count, "status:OK")));
    EXPECT_EQ(ReadBytes(fonts / "N" / "descriptor"), "") << count;
    EXPECT_EQ(ReadBytes(fonts / "N" / "N.lscfg"), "") << count;
  }
}

TEST_F(UpdateUtilsTest, AFontIsCompleteWithItsMarkerOnly) {
  EXPECT_FALSE(utils.FontExists("A"));
  EXPECT_FALSE(utils.FontExistsAndCompleted("A"));
  ASSERT_TRUE(utils.CreateFont("A"));
  ASSERT_TRUE(utils.CreateFont("A")) << "one that is there stays";
  EXPECT_TRUE(utils.FontExists("A"));
  EXPECT_FALSE(utils.FontExistsAndCompleted("A"));
  WriteBytes(fonts / "A" / "fnt", "something");
  ASSERT_TRUE(utils.CompleteFont("A"));
  EXPECT_EQ(ReadBytes(fonts / "A" / "fnt"), "");
  EXPECT_TRUE(utils.FontExistsAndCompleted("A"));
  // A folder of that name marks nothing.
  fs::create_directories(fonts / "B" / "fnt");
  EXPECT_FALSE(utils.FontExistsAndCompleted("B"));
  // A file is no font.
  WriteBytes(fonts / "C", "");
  EXPECT_FALSE(utils.FontExists("C"));
}

TEST_F(UpdateUtilsTest, TheEmptyItemIsTheFontsFolderItself) {
  EXPECT_EQ(store.FolderOf(""), fonts);
  EXPECT_TRUE(utils.FontExists(""));
  EXPECT_FALSE(utils.FontExistsAndCompleted(""));
  ASSERT_TRUE(utils.CreateFont(""));
  ASSERT_TRUE(utils.WriteDescriptor("", std::vector<std::string>{"", "", "a.lsu"}));
  ASSERT_TRUE(utils.CompleteFont(""));
  EXPECT_TRUE(utils.FontExistsAndCompleted(""));
  EXPECT_EQ(ReadBytes(fonts / ".lscfg"), base::TextOf(fonts / "a.lsu") + "\r\n");
  EXPECT_THAT(StoredFonts(fonts), ElementsAre()) << "it is no font";
}

TEST_F(UpdateUtilsTest, KnowsTheFilesOfAFont) {
  ASSERT_TRUE(utils.CreateFont("A"));
  EXPECT_FALSE(utils.FontItemExists("A", "a.lsu"));
  WriteBytes(fonts / "A" / "a.lsu", "");
  EXPECT_TRUE(utils.FontItemExists("A", "a.lsu"));
  fs::create_directories(fonts / "A" / "folder.lsu");
  EXPECT_FALSE(utils.FontItemExists("A", "folder.lsu"));
}

}  // namespace
}  // namespace kestrin::core::update
