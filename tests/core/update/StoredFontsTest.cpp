// SPDX-License-Identifier: MIT
#include "core/update/StoredFonts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/TestFiles.h"

namespace kestrin::core::update {
namespace {

using support::WriteBytes;
using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

TEST(StoredFontsTest, AreListedByName) {
  const support::TemporaryFolder folder;
  for (const char* const item : {"b", "a"}) {
    fs::create_directories(folder / item / "folder.lsu");
    for (const char* const file : {"2.lsu", "1.LSU", "descriptor", "tmp"}) WriteBytes(folder / item / file, "");
  }
  WriteBytes(folder / "b" / "fnt", "");
  WriteBytes(folder / "file", "");
  const std::vector<StoredFont> found = StoredFonts(folder.Path());
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].name, "a");
  EXPECT_FALSE(found[0].complete);
  EXPECT_THAT(found[0].files, ElementsAre("1.LSU", "2.lsu"));
  EXPECT_EQ(found[1].name, "b");
  EXPECT_TRUE(found[1].complete);
}

TEST(StoredFontsTest, AreNoneWhereNoFolderIsAndNoneIsMade) {
  const support::TemporaryFolder folder;
  EXPECT_THAT(StoredFonts(folder / "fonts"), IsEmpty());
  EXPECT_TRUE(fs::is_empty(folder.Path()));
}

}  // namespace
}  // namespace kestrin::core::update
