// SPDX-License-Identifier: MIT
#include "platform/desktop/ProgramFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/TestFiles.h"

namespace kestrin::platform::desktop {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

constexpr const char* kCatalogue = "KestrinLEDS.ldcfg";

/// Programs in "tree/bin", data in "tree/share/kestrin" once it is installed there.
class ProgramFolder : public testing::Test {
 protected:
  ProgramFolder() { fs::create_directories(programs); }

  static void PutData(const fs::path& place) {
    fs::create_directories(place);
    support::WriteBytes(place / kCatalogue, "");
  }

  support::TemporaryFolder folder;
  fs::path tree = folder.Path() / "tree";
  fs::path programs = tree / "bin";
  fs::path data = tree / "share" / "kestrin";
  fs::path own = folder.Path() / "own";
};

TEST_F(ProgramFolder, IsThatOfTheProgramsWhereTheDataLiesBesideThem) {
  PutData(programs);
  EXPECT_EQ(ProgramFolderOf(programs), programs);
  // What is installed elsewhere is of another version, perhaps.
  PutData(data);
  EXPECT_EQ(ProgramFolderOf(programs), programs);
}

#if !defined(_WIN32)
TEST_F(ProgramFolder, IsThatOfTheInstalledDataElse) {
  PutData(data);
  EXPECT_EQ(ProgramFolderOf(programs), data);
}

TEST_F(ProgramFolder, MovesWithItsTree) {
  PutData(data);
  const fs::path moved = folder.Path() / "a new place";
  fs::rename(tree, moved);
  EXPECT_EQ(ProgramFolderOf(moved / "bin"), moved / "share" / "kestrin");
}

TEST_F(ProgramFolder, ThatIsInstalledApartIsNotWrittenInto) {
  PutData(data);
  EXPECT_THAT(FoldersToWriteIn(data, programs, own), ElementsAre(own));
  // However it is spelled.
  EXPECT_THAT(FoldersToWriteIn(programs / ".." / "share" / "kestrin", programs, own), ElementsAre(own));
}

TEST_F(ProgramFolder, ThatIsInstalledApartIsTheLastResortOfWhoHasNoFolder) {
  PutData(data);
  EXPECT_THAT(FoldersToWriteIn(data, programs, ""), ElementsAre(data));
}
#endif

TEST_F(ProgramFolder, WithoutAnyDataIsThatOfThePrograms) {
  // Where the message about what is missing makes the most sense.
  EXPECT_EQ(ProgramFolderOf(programs), programs);
  EXPECT_EQ(ProgramFolderOf(""), "");
}

TEST_F(ProgramFolder, BesideTheProgramsIsWrittenIntoFirst) {
  PutData(programs);
  EXPECT_THAT(FoldersToWriteIn(programs, programs, own), ElementsAre(programs, own));
}

TEST_F(ProgramFolder, ThatThePersonNamesIsWrittenIntoFirst) {
  const fs::path named = folder.Path() / "named";
  EXPECT_THAT(FoldersToWriteIn(named, programs, own), ElementsAre(named, own));
  EXPECT_THAT(FoldersToWriteIn(named, "", own), ElementsAre(named, own));
}

}  // namespace
}  // namespace kestrin::platform::desktop
