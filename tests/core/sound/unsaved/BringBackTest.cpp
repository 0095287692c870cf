// SPDX-License-Identifier: MIT
#include <string>

#include "core/sound/SoundSet.h"
#include "core/sound/unsaved/UnsavedSet.h"
#include "support/RecordingDisk.h"
#include "support/SoundSetFixture.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;
using support::AnyDisk;
using support::ReadBytes;
using support::WriteBytes;

/// A set of two swings that is saved, then changed; and what is kept of that.
class BringBackTest : public support::SoundSetFixture {
 protected:
  BringBackTest() {
    Fill(SlotKind::Motion, 2);
    EXPECT_TRUE(set.Save(mine, AnyDisk()));
    saved = ReadBytes(mine);
    set.SetVolume(SlotKind::Motion, 1, 60);
    set.Remove(SlotKind::Motion, 2);
    EXPECT_TRUE(set.Add(SlotKind::Idle, Sound("hum.lsu", 300)));
    unsaved = WriteBytes(folder / "kept.lscfg", *UnsavedSet::ContentOf(set));
    // The set of the next start.
    set.Clear();
  }

  fs::path mine = folder / "mine.lscfg";
  std::string saved;
  fs::path unsaved;
};

TEST_F(BringBackTest, AsUnsavedChangesOfItsOwnFile) {
  const LoadResult result = set.BringBack(unsaved, mine);
  ASSERT_TRUE(result.valid) << result.valid.Text();
  EXPECT_TRUE(result.failed.empty());
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@60");
  EXPECT_EQ(Names(SlotKind::Idle), "hum.lsu@100");
  EXPECT_EQ(set.Path(), mine);
  EXPECT_EQ(set.Name(), "mine");
  EXPECT_TRUE(set.IsModified());
  EXPECT_EQ(ReadBytes(mine), saved) << "its file is the person's";
}

TEST_F(BringBackTest, UndoLeadsToWhatTheFileHolds) {
  ASSERT_TRUE(set.BringBack(unsaved, mine).valid);
  EXPECT_EQ(set.UndoText(), "Bring back mine");
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@100 motion 2.lsu@100");
  EXPECT_FALSE(set.IsModified());
  set.Redo();
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@60");
  EXPECT_TRUE(set.IsModified());
}

TEST_F(BringBackTest, WithoutAFileOfItsOwn) {
  ASSERT_TRUE(set.BringBack(unsaved, {}).valid);
  EXPECT_EQ(Names(SlotKind::Idle), "hum.lsu@100");
  EXPECT_EQ(set.Path(), "");
  EXPECT_EQ(set.Name(), "New set");
  EXPECT_TRUE(set.IsModified());
}

TEST_F(BringBackTest, KeepsThePlaceOfAFileThatIsGoneOrNoSetAnyMore) {
  fs::remove(mine);
  ASSERT_TRUE(set.BringBack(unsaved, mine).valid);
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@60");
  EXPECT_EQ(set.Path(), mine);
  EXPECT_TRUE(set.IsModified());
  EXPECT_FALSE(fs::exists(mine));
  WriteBytes(mine, "BOOT\r\n" + (folder / "hum.lsu").string() + "\r\n 100\r\nsomething else\r\n");
  ASSERT_TRUE(set.BringBack(unsaved, mine).valid);
  EXPECT_EQ(set.Count(SlotKind::Boot), 0);
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@60");
  EXPECT_TRUE(set.IsModified());
}

TEST_F(BringBackTest, KeepsTheRowsOfSoundsThatHaveGoneMeanwhile) {
  fs::remove(folder / "motion 1.lsu");
  const LoadResult result = set.BringBack(unsaved, mine);
  ASSERT_TRUE(result.valid);
  ASSERT_EQ(result.failed.size(), 1U);
  EXPECT_EQ(set.Rows(SlotKind::Motion), 1);
  EXPECT_EQ(set.Count(SlotKind::Motion), 0);
  EXPECT_EQ(set.PathAt({SlotKind::Motion, 1}), folder / "motion 1.lsu");
}

TEST_F(BringBackTest, StaysWithTheFileWhenItIsNotValid) {
  const std::string content = ReadBytes(unsaved);
  WriteBytes(unsaved, content.substr(0, content.find("MOTION")) + "NONSENSE\r\n");
  EXPECT_FALSE(set.BringBack(unsaved, mine).valid);
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@100 motion 2.lsu@100");
  EXPECT_EQ(set.Count(SlotKind::Idle), 0);
  EXPECT_FALSE(set.IsModified());
}

TEST_F(BringBackTest, IsRefusedWhileASetIsLoaded) {
  bool tried = false;
  const LoadResult outer = set.Load(mine, [&] {
    if (std::exchange(tried, true)) return;
    EXPECT_EQ(set.BringBack(unsaved, mine).valid.Why().kind, base::FailureKind::Busy);
  });
  EXPECT_TRUE(tried);
  EXPECT_TRUE(outer.valid);
}

}  // namespace
}  // namespace kestrin::core::sound
