// SPDX-License-Identifier: MIT
#include "ui/sound/FolderContents.h"

#include <gtest/gtest.h>

#include "support/TestFiles.h"

namespace kestrin::ui::sound {
namespace {

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
}  // namespace kestrin::ui::sound
