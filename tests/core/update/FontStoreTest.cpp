// SPDX-License-Identifier: MIT
#include "core/update/FontStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <system_error>

#include "core/base/PathText.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::core::update {
namespace {

using base::FailureKind;
using base::Result;
using support::ReadBytes;
using support::WriteBytes;
using testing::FieldsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

class FontStoreTest : public testing::Test {
 protected:
  support::TemporaryFolder folder;
  fs::path fonts = folder / "fonts";
  support::RecordingDisk disk;
  FontStore store{fonts, disk};
};

TEST_F(FontStoreTest, SaysWhatIsInTheWay) {
  WriteBytes(fonts / "A", "mine");
  EXPECT_THAT(store.MakeFolder("A").Why(),
              FieldsAre(FailureKind::InTheWay, HasSubstr("A\" could not be made: a file of that name is in the way")));
  EXPECT_EQ(ReadBytes(fonts / "A"), "mine");
  ASSERT_TRUE(store.MakeFolder("B"));
  for (const char* const name : {"descriptor", "tmp"}) fs::create_directories(fonts / "B" / name / "full");
  EXPECT_THAT(
      store.Write("B", "descriptor", "x").Why(),
      FieldsAre(FailureKind::InTheWay, HasSubstr("descriptor\" could not be written: a folder of that name is in")));
  EXPECT_THAT(store.RemoveTemporary("B").Why(),
              FieldsAre(FailureKind::InTheWay, HasSubstr("tmp\" could not be removed: a folder of that name is in")));
  EXPECT_TRUE(store.RemoveTemporary("C")) << "there is none";
}

TEST_F(FontStoreTest, NothingIsWrittenThroughALink) {
  const fs::path elsewhere = folder / "elsewhere";
  fs::create_directories(elsewhere);
  fs::create_directory_symlink(elsewhere, fonts / "L");
  fs::create_symlink(folder / "nowhere", fonts / "M");
  for (const char* const item : {"L", "M"})
    for (const Result<>& step : {store.MakeFolder(item), store.Write(item, "fnt", ""), store.RemoveTemporary(item)})
      EXPECT_THAT(step.Why(), FieldsAre(FailureKind::InTheWay, HasSubstr(std::string(item) + "\" is a link to another "
                                                                                             "place")));
  EXPECT_TRUE(fs::is_empty(elsewhere));

  ASSERT_TRUE(store.MakeFolder("A"));
  for (const char* const name : {"descriptor", "fnt", "tmp"}) {
    WriteBytes(elsewhere / name, "mine");
    fs::create_symlink(elsewhere / name, fonts / "A" / name);
  }
  ASSERT_TRUE(store.Write("A", "descriptor", "x"));
  ASSERT_TRUE(store.Write("A", "fnt", ""));
  ASSERT_TRUE(store.RemoveTemporary("A"));
  for (const char* const name : {"descriptor", "fnt", "tmp"}) {
    EXPECT_EQ(ReadBytes(elsewhere / name), "mine") << name;
    EXPECT_FALSE(fs::is_symlink(fonts / "A" / name)) << name;
  }
  EXPECT_EQ(ReadBytes(fonts / "A" / "descriptor"), "x");
  // A link that leads nowhere must not make a file there.
  fs::create_symlink(folder / "nowhere", fonts / "A" / "tmp");
  ASSERT_TRUE(store.RemoveTemporary("A"));
  EXPECT_FALSE(fs::exists(fs::symlink_status(fonts / "A" / "tmp")));
}

TEST_F(FontStoreTest, OneAtATimeTakesTheFolderAndFindsNoLeftOvers) {
  WriteBytes(fonts / ".trial", "");
  auto first = store.Take();
  ASSERT_TRUE(first);
  EXPECT_TRUE(disk.IsLocked(fonts / ".lock"));
  EXPECT_FALSE(fs::exists(fonts / ".trial"));
  // It may be the other's.
  WriteBytes(fonts / ".trial", "");
  EXPECT_EQ(store.Take().Why().kind, FailureKind::InUse);
  EXPECT_TRUE(fs::exists(fonts / ".trial"));
  first->reset();
  EXPECT_TRUE(store.Take());
}

TEST_F(FontStoreTest, WhyTheFolderCannotBeTakenHasItsKind) {
  struct Row {
    std::errc error;
    FailureKind kind;
  };
  const Row table[] = {{std::errc::permission_denied, FailureKind::NotPermitted},
                       {std::errc::read_only_file_system, FailureKind::NotPermitted},
                       {std::errc::no_space_on_device, FailureKind::DiskFull},
                       {std::errc::io_error, FailureKind::Failed}};
  for (const Row& row : table) {
    disk.lockError = std::make_error_code(row.error);
    EXPECT_THAT(store.Take().Why(), FieldsAre(row.kind, "\"" + base::TextOf(fonts / ".lock") +
                                                            "\" could not be locked: " + disk.lockError.message()));
  }
  for (const bool link : {false, true}) {
    if (link)
      fs::create_symlink(folder / "nowhere", fonts / ".lock");
    else
      fs::create_directories(fonts / ".lock");
    EXPECT_THAT(store.Take().Why(), FieldsAre(FailureKind::InTheWay,
                                              HasSubstr(std::string(".lock\" could not be locked: a ") +
                                                        (link ? "link" : "folder") + " of that name is in the way")));
    fs::remove(fonts / ".lock");
  }
}

}  // namespace
}  // namespace kestrin::core::update
