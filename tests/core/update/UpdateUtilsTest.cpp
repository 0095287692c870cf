#include "core/update/UpdateUtils.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/base/PathText.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::core::update {
namespace {

using support::ReadBytes;
using support::WriteBytes;
using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

class UpdateUtilsTest : public testing::Test {
 protected:
  support::TemporaryFolder folder;
  fs::path fonts = folder / "fonts";
  support::RecordingDisk disk;
  UpdateUtils utils{fonts, disk};
};

TEST_F(UpdateUtilsTest, MakesTheFontsFolderAndLeavesTheWorkingFolderAlone) {
  EXPECT_TRUE(fs::is_directory(fonts));
  EXPECT_NE(fs::current_path(), fonts);
  utils.Initialize();
  EXPECT_THAT(utils.Fonts(), ElementsAre());
  WriteBytes(fonts / "kept", "");
  const UpdateUtils again(fonts, disk);
  EXPECT_TRUE(fs::exists(fonts / "kept"));
}

TEST(UpdateTextTest, SlicesAtEveryPairOfCarriageReturnAndLineFeed) {
  EXPECT_THAT(UpdateUtils::SliceText(""), ElementsAre());
  EXPECT_THAT(UpdateUtils::SliceText("a"), ElementsAre("a"));
  EXPECT_THAT(UpdateUtils::SliceText("\r\n"), ElementsAre("", ""));
  EXPECT_THAT(UpdateUtils::SliceText("a\r\nb\r\n"), ElementsAre("a", "b", ""));
  EXPECT_THAT(UpdateUtils::SliceText("a\nb\rc\r\r\nd\n\r"), ElementsAre("a\nb\rc\r", "d\n\r"));
  for (const char* const text : {"", "a", "\r\n", "a\r\nb\r\n", "a\nb\rc\r\r\nd\n\r", "\r\n\r\n\r\n"})
    EXPECT_EQ(UpdateUtils::CountLines(text), UpdateUtils::SliceText(text).size()) << text;
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
  ASSERT_EQ(utils.CreateFont("Night"), "");
  const std::vector<std::string> lines = {"status:OK", "clientv:1", "one.lsu", " 100", "TWO.LSU"};
  ASSERT_EQ(utils.WriteDescriptor("Night", lines), "");
  EXPECT_EQ(ReadBytes(fonts / "Night" / "descriptor"), "one.lsu\r\n 100\r\nTWO.LSU\r\n");
  const std::string own = base::TextOf(fonts) + "/Night/";
  EXPECT_EQ(ReadBytes(fonts / "Night" / "Night.lscfg"), own + "one.lsu\r\n 100\r\n" + own + "TWO.LSU\r\n");
  EXPECT_EQ(utils.ConfigurationOf("Night"), fonts / "Night" / "Night.lscfg");
  EXPECT_TRUE(own.front() == '/') << "full paths, wherever the program is started";
}

TEST_F(UpdateUtilsTest, ATrailingEmptyLineIsWrittenAndOldFilesAreReplaced) {
  ASSERT_EQ(utils.CreateFont("N"), "");
  ASSERT_EQ(utils.WriteDescriptor("N", std::vector<std::string>{"", "", "a much longer first version.lsu"}), "");
  ASSERT_EQ(utils.WriteDescriptor("N", std::vector<std::string>{"", "", "x", ""}), "");
  EXPECT_EQ(ReadBytes(fonts / "N" / "descriptor"), "x\r\n\r\n");
  EXPECT_EQ(ReadBytes(fonts / "N" / "N.lscfg"), "x\r\n\r\n");
  for (const std::size_t count : {0U, 1U, 2U}) {
    ASSERT_EQ(utils.WriteDescriptor("N", std::vector<std::string>(count, "status:OK")), "");
    EXPECT_EQ(ReadBytes(fonts / "N" / "descriptor"), "") << count;
    EXPECT_EQ(ReadBytes(fonts / "N" / "N.lscfg"), "") << count;
  }
}

TEST_F(UpdateUtilsTest, AFontIsCompleteWithItsMarkerOnly) {
  EXPECT_FALSE(utils.FontExists("A"));
  EXPECT_FALSE(utils.FontExistsAndCompleted("A"));
  ASSERT_EQ(utils.CreateFont("A"), "");
  ASSERT_EQ(utils.CreateFont("A"), "") << "one that is there stays";
  EXPECT_TRUE(utils.FontExists("A"));
  EXPECT_FALSE(utils.FontExistsAndCompleted("A"));
  WriteBytes(fonts / "A" / "fnt", "something");
  ASSERT_EQ(utils.CompleteFont("A"), "");
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
  EXPECT_EQ(utils.FolderOf(""), fonts);
  EXPECT_TRUE(utils.FontExists(""));
  EXPECT_FALSE(utils.FontExistsAndCompleted(""));
  ASSERT_EQ(utils.CreateFont(""), "");
  ASSERT_EQ(utils.WriteDescriptor("", std::vector<std::string>{"", "", "a.lsu"}), "");
  ASSERT_EQ(utils.CompleteFont(""), "");
  EXPECT_TRUE(utils.FontExistsAndCompleted(""));
  EXPECT_EQ(ReadBytes(fonts / ".lscfg"), base::TextOf(fonts) + "/a.lsu\r\n");
  EXPECT_THAT(utils.Fonts(), ElementsAre()) << "it is no font";
}

TEST_F(UpdateUtilsTest, KnowsTheFilesOfAFont) {
  ASSERT_EQ(utils.CreateFont("A"), "");
  EXPECT_FALSE(utils.FontItemExists("A", "a.lsu"));
  WriteBytes(fonts / "A" / "a.lsu", "");
  EXPECT_TRUE(utils.FontItemExists("A", "a.lsu"));
  fs::create_directories(fonts / "A" / "folder.lsu");
  EXPECT_FALSE(utils.FontItemExists("A", "folder.lsu"));
}

TEST_F(UpdateUtilsTest, ListsTheFontsByName) {
  for (const char* const item : {"b", "a"}) {
    ASSERT_EQ(utils.CreateFont(item), "");
    for (const char* const file : {"2.lsu", "1.LSU", "descriptor", "tmp"}) WriteBytes(fonts / item / file, "");
  }
  ASSERT_EQ(utils.CompleteFont("b"), "");
  WriteBytes(fonts / "file", "");
  const std::vector<UpdateUtils::Font> found = utils.Fonts();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].name, "a");
  EXPECT_FALSE(found[0].complete);
  EXPECT_THAT(found[0].files, ElementsAre("1.LSU", "2.lsu"));
  EXPECT_EQ(found[1].name, "b");
  EXPECT_TRUE(found[1].complete);
}

TEST_F(UpdateUtilsTest, SaysWhatIsInTheWay) {
  WriteBytes(fonts / "A", "mine");
  EXPECT_THAT(utils.CreateFont("A"), HasSubstr("A\" could not be made: a file of that name is in the way"));
  EXPECT_EQ(ReadBytes(fonts / "A"), "mine");
  ASSERT_EQ(utils.CreateFont("B"), "");
  for (const char* const name : {"descriptor", "B.lscfg", "fnt", "tmp"})
    fs::create_directories(fonts / "B" / name / "full");
  EXPECT_THAT(utils.WriteDescriptor("B", {}), HasSubstr("descriptor\" could not be written: a folder of that name"));
  EXPECT_THAT(utils.CompleteFont("B"), HasSubstr("fnt\" could not be written: a folder of that name"));
  EXPECT_THAT(utils.RemoveTemporary("B"), HasSubstr("tmp\" could not be removed: "));
  EXPECT_EQ(utils.RemoveTemporary("C"), "") << "there is none";
}

TEST_F(UpdateUtilsTest, NothingIsWrittenThroughALink) {
  const fs::path elsewhere = folder / "elsewhere";
  fs::create_directories(elsewhere);
  fs::create_directory_symlink(elsewhere, fonts / "L");
  EXPECT_THAT(utils.CreateFont("L"), HasSubstr("L\" is a link to another place"));
  fs::create_symlink(folder / "nowhere", fonts / "M");
  EXPECT_THAT(utils.CreateFont("M"), HasSubstr("M\" is a link to another place"));

  ASSERT_EQ(utils.CreateFont("A"), "");
  for (const char* const name : {"descriptor", "A.lscfg", "fnt", "tmp"}) {
    WriteBytes(elsewhere / name, "mine");
    fs::create_symlink(elsewhere / name, fonts / "A" / name);
  }
  ASSERT_EQ(utils.WriteDescriptor("A", std::vector<std::string>{"", "", "x"}), "");
  ASSERT_EQ(utils.RemoveTemporary("A"), "");
  ASSERT_EQ(utils.CompleteFont("A"), "");
  for (const char* const name : {"descriptor", "A.lscfg", "fnt", "tmp"}) {
    EXPECT_EQ(ReadBytes(elsewhere / name), "mine") << name;
    EXPECT_FALSE(fs::is_symlink(fonts / "A" / name)) << name;
  }
  EXPECT_EQ(ReadBytes(fonts / "A" / "descriptor"), "x\r\n");
  // A link that leads nowhere must not make a file there.
  fs::create_symlink(folder / "nowhere", fonts / "A" / "tmp");
  ASSERT_EQ(utils.RemoveTemporary("A"), "");
  EXPECT_FALSE(fs::exists(fs::symlink_status(fonts / "A" / "tmp")));
}

TEST_F(UpdateUtilsTest, LiesInTheFirstFolderThatCanBeWritten) {
  const fs::path program = folder / "program";
  const fs::path data = folder / "data";
  const fs::path both[] = {program, data};
  EXPECT_EQ(UpdateUtils::PlaceIn(both), program / "fonts");
  EXPECT_TRUE(fs::is_empty(program / "fonts")) << "what was tried is gone";
  EXPECT_FALSE(fs::exists(data));
  // What the person keeps there is no business of the trial, whatever its name.
  fs::create_directories(program / "fonts" / "probe");
  WriteBytes(program / "fonts" / "probe" / "fnt", "");
  WriteBytes(program / "fonts" / ".trial", "mine");
  EXPECT_EQ(UpdateUtils::PlaceIn(both), program / "fonts");
  EXPECT_TRUE(fs::exists(program / "fonts" / "probe" / "fnt"));
  fs::remove_all(program / "fonts" / "probe");
  WriteBytes(program / "fonts" / "probe", "mine");
  EXPECT_EQ(UpdateUtils::PlaceIn(both), program / "fonts");
  EXPECT_EQ(ReadBytes(program / "fonts" / "probe"), "mine");
  EXPECT_EQ(ReadBytes(program / "fonts" / ".trial"), "mine");
  EXPECT_EQ(std::distance(fs::directory_iterator(program / "fonts"), fs::directory_iterator()), 2);
  fs::remove_all(program / "fonts");
  fs::create_directories(program / "fonts");
  // A program folder that takes no folder: its "fonts" is a file.
  fs::remove(program / "fonts");
  WriteBytes(program / "fonts", "");
  EXPECT_EQ(UpdateUtils::PlaceIn(both), data / "fonts");
  // Nor the other one: then writing says why.
  fs::remove(data / "fonts");
  WriteBytes(data / "fonts", "");
  EXPECT_EQ(UpdateUtils::PlaceIn(both), data / "fonts");
  EXPECT_THAT(UpdateUtils(data / "fonts", disk).CreateFont(""),
              HasSubstr("fonts\" could not be made: a file of that name"));
}

TEST_F(UpdateUtilsTest, AFolderThatCannotEvenBeLookedAtIsPassedOver) {
  fs::create_directories(folder / "program");
  fs::create_symlink("fonts", folder / "program" / "fonts");
  fs::create_symlink("loop", folder / "loop");
  const fs::path data = folder / "data";
  for (const fs::path& program : {folder / "program", folder / "loop" / "program"}) {
    const fs::path both[] = {program, data};
    EXPECT_EQ(UpdateUtils::PlaceIn(both), data / "fonts") << program;
    EXPECT_THAT(UpdateUtils(program / "fonts", disk).CreateFont("A"), HasSubstr("A\" could not be made: ")) << program;
  }
}

}  // namespace
}  // namespace kestrin::core::update
