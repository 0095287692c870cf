// SPDX-License-Identifier: MIT
#include "core/update/FontsPlace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/update/FontStore.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::core::update {
namespace {

using support::ReadBytes;
using support::WriteBytes;
using testing::HasSubstr;
namespace fs = std::filesystem;

class FontsPlaceTest : public testing::Test {
 protected:
  support::TemporaryFolder folder;
  support::RecordingDisk disk;
};

TEST_F(FontsPlaceTest, LiesInTheFirstFolderThatCanBeWritten) {
  const fs::path program = folder / "program";
  const fs::path data = folder / "data";
  const fs::path both[] = {program, data};
  EXPECT_EQ(FontsPlaceIn(both), program / "fonts");
  EXPECT_TRUE(fs::is_empty(program / "fonts")) << "what was tried is gone";
  EXPECT_FALSE(fs::exists(data));
  // What the person keeps there is no business of the trial, whatever its name.
  fs::create_directories(program / "fonts" / "probe");
  WriteBytes(program / "fonts" / "probe" / "fnt", "");
  WriteBytes(program / "fonts" / ".trial", "mine");
  EXPECT_EQ(FontsPlaceIn(both), program / "fonts");
  EXPECT_TRUE(fs::exists(program / "fonts" / "probe" / "fnt"));
  fs::remove_all(program / "fonts" / "probe");
  WriteBytes(program / "fonts" / "probe", "mine");
  EXPECT_EQ(FontsPlaceIn(both), program / "fonts");
  EXPECT_EQ(ReadBytes(program / "fonts" / "probe"), "mine");
  EXPECT_EQ(ReadBytes(program / "fonts" / ".trial"), "mine");
  EXPECT_EQ(std::distance(fs::directory_iterator(program / "fonts"), fs::directory_iterator()), 2);
  fs::remove_all(program / "fonts");
  fs::create_directories(program / "fonts");
  // A program folder that takes no folder: its "fonts" is a file.
  fs::remove(program / "fonts");
  WriteBytes(program / "fonts", "");
  EXPECT_EQ(FontsPlaceIn(both), data / "fonts");
  // Nor the other one: then writing says why.
  fs::remove(data / "fonts");
  WriteBytes(data / "fonts", "");
  EXPECT_EQ(FontsPlaceIn(both), data / "fonts");
  EXPECT_THAT(FontStore(data / "fonts", disk).MakeFolder("").Text(),
              HasSubstr("fonts\" could not be made: a file of that name"));
}

TEST_F(FontsPlaceTest, AFolderThatCannotEvenBeLookedAtIsPassedOver) {
  fs::create_directories(folder / "program");
  fs::create_symlink("fonts", folder / "program" / "fonts");
  fs::create_symlink("loop", folder / "loop");
  const fs::path data = folder / "data";
  for (const fs::path& program : {folder / "program", folder / "loop" / "program"}) {
    const fs::path both[] = {program, data};
    EXPECT_EQ(FontsPlaceIn(both), data / "fonts") << program;
    EXPECT_THAT(FontStore(program / "fonts", disk).MakeFolder("A").Text(), HasSubstr("A\" could not be made: "))
        << program;
  }
}

}  // namespace
}  // namespace kestrin::core::update
