// SPDX-License-Identifier: MIT
#include "core/sound/unsaved/UnsavedSet.h"

#include <string>

#include "support/RecordingDisk.h"
#include "support/SoundSetFixture.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;
using support::AnyDisk;
using support::ReadBytes;
using support::WriteBytes;

class UnsavedSetTest : public support::SoundSetFixture {
 protected:
  /// What a file of the set says that has one sound, in the boot slot.
  [[nodiscard]] static std::string Lines(const fs::path& boot, const std::string& volume) {
    return "BOOT\r\n" + boot.string() + "\r\n " + volume +
           "\r\nPWRON\r\n\r\n 100\r\nPWROFF\r\n\r\n 100\r\nIDLE\r\n\r\n 100\r\nMOTION-0\r\nIMPACT-0\r\nLOCKUP-0\r\n";
  }
  [[nodiscard]] static std::string End(const fs::path& origin) {
    return "UNSAVED CHANGES OF " + origin.string() + "\r\nEND OF THE UNSAVED SET\r\n";
  }
  [[nodiscard]] fs::path Written(const std::string& content) const {
    return WriteBytes(folder / "unsaved.lscfg", content);
  }
};

TEST_F(UnsavedSetTest, SaysWhatTheConfigurationSaysAndWhoseItIs) {
  const fs::path boot = Sound("boot.lsu", 100);
  ASSERT_TRUE(set.Add(SlotKind::Boot, boot));
  EXPECT_EQ(*UnsavedSet::ContentOf(set), Lines(boot, "100") + End(""));
  ASSERT_TRUE(set.Save(folder / "mine.lscfg", AnyDisk()));
  ASSERT_TRUE(set.SetVolume(SlotKind::Boot, 1, 60));
  EXPECT_EQ(*UnsavedSet::ContentOf(set), Lines(boot, "60") + End(folder / "mine.lscfg"));
}

TEST_F(UnsavedSetTest, NamesWholePathsSinceTheProgramMayStartElsewhere) {
  const fs::path before = fs::current_path();
  Sound("boot.lsu", 100);
  fs::current_path(folder.Path());
  ASSERT_TRUE(set.Add(SlotKind::Boot, "boot.lsu"));
  ASSERT_TRUE(set.Save("mine.lscfg", AnyDisk()));
  const base::Result<std::string> content = UnsavedSet::ContentOf(set);
  fs::current_path(before);
  EXPECT_EQ(*content, Lines(folder / "boot.lsu", "100") + End(folder / "mine.lscfg"));
}

TEST_F(UnsavedSetTest, ReadsWhoseItIsAndWhatItIsCalled) {
  const auto mine = UnsavedSet::Read(Written(Lines("", "100") + End("/sets/Deep Forge.lscfg")));
  ASSERT_TRUE(mine) << mine.Text();
  EXPECT_EQ((*mine).Origin(), "/sets/Deep Forge.lscfg");
  EXPECT_EQ((*mine).Name(), "Deep Forge");
  const auto fresh = UnsavedSet::Read(Written(Lines("", "100") + End("")));
  ASSERT_TRUE(fresh) << fresh.Text();
  EXPECT_EQ((*fresh).Origin(), "");
  EXPECT_EQ((*fresh).Name(), "New set");
}

TEST_F(UnsavedSetTest, IsSavedWhenItsFileSaysTheSame) {
  const fs::path mine = WriteBytes(folder / "mine.lscfg", Lines("/a.lsu", "60"));
  EXPECT_TRUE((*UnsavedSet::Read(Written(Lines("/a.lsu", "60") + End(mine)))).IsSaved());
  EXPECT_FALSE((*UnsavedSet::Read(Written(Lines("/a.lsu", "61") + End(mine)))).IsSaved());
  EXPECT_FALSE((*UnsavedSet::Read(Written(Lines("/a.lsu", "60") + "MORE\r\n" + End(mine)))).IsSaved());
  EXPECT_FALSE((*UnsavedSet::Read(Written(Lines("/a.lsu", "60") + End("")))).IsSaved());
  EXPECT_FALSE((*UnsavedSet::Read(Written(Lines("/a.lsu", "60") + End(folder / "gone.lscfg")))).IsSaved());
}

TEST_F(UnsavedSetTest, TakesNoHalfOfOneForAWholeOne) {
  const std::string whole = Lines("/a.lsu", "60") + End("/mine.lscfg");
  ASSERT_TRUE(UnsavedSet::Read(Written(whole)));
  // Without the line's end it says all the same.
  ASSERT_TRUE(UnsavedSet::Read(Written(whole.substr(0, whole.size() - 2))));
  for (std::size_t length = 0; length + 2 < whole.size(); ++length)
    EXPECT_FALSE(UnsavedSet::Read(Written(whole.substr(0, length)))) << length;
}

TEST_F(UnsavedSetTest, RefusesWhatIsNoSuchFile) {
  const auto refusal = [this](const std::string& content) {
    const auto read = UnsavedSet::Read(Written(content));
    return read ? base::FailureKind::Failed : read.Why().kind;
  };
  EXPECT_EQ(refusal(Lines("/a.lsu", "60")), base::FailureKind::NotValid) << "a set of the person's";
  EXPECT_EQ(refusal(End("/mine.lscfg")), base::FailureKind::NotValid) << "nothing but its end";
  EXPECT_EQ(refusal("Dear Sir\r\nEND OF THE UNSAVED SET\r\n"), base::FailureKind::NotValid);
  EXPECT_EQ(refusal(std::string(4096, '\0') + End("")), base::FailureKind::NotValid) << "blocks that never arrived";
  EXPECT_EQ(UnsavedSet::Read(folder / "nowhere").Why().kind, base::FailureKind::NotFound);
}

}  // namespace
}  // namespace kestrin::core::sound
