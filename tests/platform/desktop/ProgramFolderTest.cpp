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

TEST_F(ProgramFolder, AmongEverybodysProgramsIsNotWrittenInto) {
  PutData(programs);
  EXPECT_THAT(FoldersToWriteIn(programs, programs, own, {tree}), ElementsAre(own));
  EXPECT_THAT(FoldersToWriteIn(programs, programs, own, {folder.Path() / "other", programs}), ElementsAre(own));
  // However it is spelled.
  EXPECT_THAT(FoldersToWriteIn(programs, programs, own, {tree / "bin" / ".."}), ElementsAre(own));
  EXPECT_THAT(FoldersToWriteIn(programs, programs / ".." / "bin", own, {tree}), ElementsAre(own));
  // The last resort of who has no folder.
  EXPECT_THAT(FoldersToWriteIn(programs, programs, "", {tree}), ElementsAre(programs));
}

TEST_F(ProgramFolder, OutsideOfEverybodysProgramsIsWrittenIntoFirst) {
  PutData(programs);
  // Names that begin alike are no folders in each other.
  EXPECT_THAT(FoldersToWriteIn(programs, programs, own, {tree / "bi", programs / "below", folder.Path() / "tre", ""}),
              ElementsAre(programs, own));
  const fs::path elsewhere = folder.Path() / "elsewhere" / "bin";
  fs::create_directories(elsewhere);
  EXPECT_THAT(FoldersToWriteIn(elsewhere, tree / ".." / "elsewhere" / "bin", own, {tree}), ElementsAre(elsewhere, own));
  // What the person names is theirs, wherever the programs are.
  const fs::path named = folder.Path() / "named";
  EXPECT_THAT(FoldersToWriteIn(named, programs, own, {tree}), ElementsAre(named, own));
}

#if defined(_WIN32)
TEST_F(ProgramFolder, OfEverybodysProgramsIsTheOneThatWindowsNames) {
  const fs::path everybodys = folder.Path() / "Программы ü";
  const fs::path installed = everybodys / "Kestrin";
  PutData(installed);
  const std::wstring before = _wgetenv(L"ProgramFiles");
  _wputenv_s(L"ProgramFiles", everybodys.c_str());
  EXPECT_THAT(FoldersToWriteIn(installed, installed, own), ElementsAre(own));
  EXPECT_THAT(FoldersToWriteIn(everybodys / "KESTRIN", installed, own), ElementsAre(own)) << "letters of another case";
  _wputenv_s(L"ProgramFiles", before.c_str());
  EXPECT_THAT(FoldersToWriteIn(installed, installed, own), ElementsAre(installed, own));
  const fs::path real = fs::path(before) / "Kestrin Launcher";
  EXPECT_THAT(FoldersToWriteIn(real, real, own), ElementsAre(own));
}
#endif

TEST_F(ProgramFolder, ThatThePersonNamesIsWrittenIntoFirst) {
  const fs::path named = folder.Path() / "named";
  EXPECT_THAT(FoldersToWriteIn(named, programs, own), ElementsAre(named, own));
  EXPECT_THAT(FoldersToWriteIn(named, "", own), ElementsAre(named, own));
}

}  // namespace
}  // namespace kestrin::platform::desktop
