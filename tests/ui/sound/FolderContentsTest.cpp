#include "sound/ui/FolderContents.h"

#include <gtest/gtest.h>

#include "support/TestFiles.h"

namespace kestrin::sound::ui {
namespace {

TEST(FolderContentsTest, DurationsComeFromSizes) {
  struct Case {
    qint64 size;
    qint64 samples;
  };
  for (const Case& each : {Case{0, 0}, {4, 0}, {5, 0}, {6, 1}, {7, 1}, {96004, 48000}})
    EXPECT_EQ((FolderEntry{{}, {}, each.size}).Samples(), each.samples) << each.size;
}

TEST(FolderContentsTest, ReadingStopsWhenItIsNoLongerWanted) {
  support::TemporaryFolder folder;
  for (int file = 0; file < 5; ++file) support::WriteBytes(folder / (std::to_string(file) + ".lsu"), "123456");
  int asked = 0;
  const FolderContents contents = FolderContents::Of(folder.Path(), [&] { return ++asked < 3; });
  EXPECT_FALSE(contents.complete);
  EXPECT_EQ(asked, 3);
  EXPECT_TRUE(FolderContents::Of(folder.Path()).complete);
  EXPECT_EQ(FolderContents::Of(folder.Path()).sounds.size(), 5U);
}

TEST(FolderContentsTest, AFolderThatCannotBeReadIsIncomplete) {
  support::TemporaryFolder folder;
  EXPECT_FALSE(FolderContents::Of(folder / "missing").complete);
  EXPECT_FALSE(FolderContents::Of(support::WriteBytes(folder / "file.lsu", "x")).complete);
}

}  // namespace
}  // namespace kestrin::sound::ui
