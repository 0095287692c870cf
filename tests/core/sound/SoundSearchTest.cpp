// SPDX-License-Identifier: MIT
#include "core/sound/SoundSearch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;
using Paths = std::vector<fs::path>;

class SoundSearchTest : public testing::Test {
 protected:
  /// A file at that place below the folder.
  fs::path File(const std::string& place) {
    const fs::path path = folder / place;
    fs::create_directories(path.parent_path());
    return support::WriteBytes(path, place);
  }
  Paths Find(const std::string& wanted) { return SoundSearch::Run({wanted}, folder.Path()).files.at(0); }

  support::TemporaryFolder folder;
};

TEST_F(SoundSearchTest, FindsFilesByNameAtAnyDepth) {
  const fs::path top = File("hum.lsu");
  const fs::path deep = File("a/b/c/d/e/swing.lsu");
  File("a/other.lsu");
  const auto result = SoundSearch::Run({"/gone/hum.lsu", "/gone/swing.lsu", "/gone/none.lsu"}, folder.Path());
  EXPECT_TRUE(result.complete);
  EXPECT_EQ(result.files, (std::vector<Paths>{{top}, {deep}, {}}));
}

TEST_F(SoundSearchTest, LettersMayHaveAnotherCaseYetTheSameOnesComeFirst) {
  const fs::path loud = File("HUM.LSU");
  EXPECT_EQ(Find("C:\\Sounds\\Hum.lsu"), Paths{loud});
  const fs::path same = File("x/Hum.lsu");
  EXPECT_EQ(Find("C:\\Sounds\\Hum.lsu"), (Paths{same, loud}));
}

TEST_F(SoundSearchTest, OfSeveralTheOneWithTheLongestSharedEndComesFirst) {
  const fs::path near = File("hum.lsu");
  const fs::path two = File("z/knight/hum.lsu");
  const fs::path three = File("y/deep/Ember/knight/hum.lsu");
  const fs::path wrong = File("ember/rogue/hum.lsu");
  EXPECT_EQ(Find("/old/ember/knight/hum.lsu"), (Paths{three, two, near, wrong}));
}

TEST_F(SoundSearchTest, TheNearestOfEqualOnesComesFirstThenTheAlphabet) {
  const fs::path far = File("a/b/c/hum.lsu");
  const fs::path later = File("d/hum.lsu");
  const fs::path earlier = File("b/hum.lsu");
  EXPECT_EQ(Find("hum.lsu"), (Paths{earlier, later, far}));
}

TEST_F(SoundSearchTest, FoldersOfThatNameAreNoFiles) {
  fs::create_directories(folder / "hum.lsu");
  const fs::path inside = File("hum.lsu/hum.lsu");
  EXPECT_EQ(Find("hum.lsu"), Paths{inside});
}

TEST_F(SoundSearchTest, TheSameFileServesTwoRowsThatWantIt) {
  const fs::path file = File("hum.lsu");
  const auto result = SoundSearch::Run({"/a/hum.lsu", "/b/hum.lsu"}, folder.Path());
  EXPECT_EQ(result.files, (std::vector<Paths>{{file}, {file}}));
}

TEST_F(SoundSearchTest, AFolderThatIsNotThereHoldsNothing) {
  const auto result = SoundSearch::Run({"hum.lsu"}, folder / "nowhere");
  EXPECT_EQ(result.files, std::vector<Paths>{{}});
  EXPECT_TRUE(result.complete);
}

TEST_F(SoundSearchTest, WithNothingToLookForItLooksAndFindsNothing) {
  File("hum.lsu");
  EXPECT_TRUE(SoundSearch::Run({}, folder.Path()).files.empty());
}

TEST_F(SoundSearchTest, StopsAtOnceWhenItMayNotGoOn) {
  File("a/hum.lsu");
  int asked = 0;
  const auto result = SoundSearch::Run({"hum.lsu"}, folder.Path(), [&asked] {
    ++asked;
    return false;
  });
  EXPECT_FALSE(result.complete);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(result.files, std::vector<Paths>{{}});
}

TEST_F(SoundSearchTest, IsAskedAtEveryEntry) {
  for (const char* name : {"a/1", "a/2", "b/3", "4"}) File(name);
  int asked = 0;
  EXPECT_TRUE(SoundSearch::Run({"hum.lsu"}, folder.Path(), [&asked] { return ++asked > 0; }).complete);
  // Two folders, four files.
  EXPECT_EQ(asked, 6);
}

TEST_F(SoundSearchTest, ATreeIsLookedThroughUpToTheBound) {
  for (const char* name : {"1", "2", "3"}) File(name);
  EXPECT_TRUE(SoundSearch::Run({"hum.lsu"}, folder.Path(), {}, 3).complete);
  EXPECT_FALSE(SoundSearch::Run({"hum.lsu"}, folder.Path(), {}, 2).complete);
}

#ifndef _WIN32
TEST_F(SoundSearchTest, LinksThatLeadRoundInACircleEndTheSearchNowhere) {
  const fs::path file = File("a/hum.lsu");
  fs::create_directory_symlink(folder.Path(), folder / "a" / "again");
  fs::create_directory_symlink(folder / "loop", folder / "loop");
  int asked = 0;
  const auto result = SoundSearch::Run({"hum.lsu"}, folder.Path(), [&asked] { return ++asked < 1000; });
  EXPECT_TRUE(result.complete);
  EXPECT_EQ(result.files, std::vector<Paths>{{file}});
}

TEST_F(SoundSearchTest, ALinkToAFileAndTheFolderOfALinkAreLookedAt) {
  File("real/sound.bin");
  fs::create_directories(folder / "links");
  fs::create_symlink(folder / "real" / "sound.bin", folder / "links" / "hum.lsu");
  fs::create_symlink(folder / "nowhere", folder / "links" / "swing.lsu");
  fs::create_directory_symlink(folder / "links", folder / "pointed");
  const auto result = SoundSearch::Run({"hum.lsu", "swing.lsu"}, folder / "pointed");
  EXPECT_EQ(result.files, (std::vector<Paths>{{folder / "pointed" / "hum.lsu"}, {}}));
}
#endif

}  // namespace
}  // namespace kestrin::core::sound
