// SPDX-License-Identifier: MIT
#include "sound/pack/SetPacker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/PathText.h"
#include "support/FakeArchives.h"

namespace kestrin::core::sound {
namespace {

using base::FailureKind;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

class SetPackerTest : public testing::Test {
 protected:
  std::filesystem::path Sound(const std::filesystem::path& name, unsigned seed = 1) {
    std::filesystem::create_directories((m_folder / name).parent_path());
    return support::WriteSoundFile(m_folder / name, support::SomeSamples(100, 20000, seed));
  }
  void Add(SlotKind kind, const std::filesystem::path& path, std::int16_t volume = 100) {
    ASSERT_TRUE(m_configuration.AddFile(path, kind));
    m_configuration.SetVolume(kind, m_configuration.Count(kind), volume);
  }
  base::Result<SetPacker::Packed> Pack(const std::vector<std::filesystem::path>& missing = {}) {
    return SetPacker(m_archives).Pack(m_configuration, missing, "Ember", m_out);
  }

  support::TemporaryFolder m_folder;
  std::filesystem::path m_out = m_folder / "out.zip";
  support::FakeArchives m_archives;
  LSU_Configuration m_configuration;
};

TEST_F(SetPackerTest, PacksEachSoundOnceUnderPlainNames) {
  const auto boot = Sound("a/boot.lsu", 1);
  const auto swing = Sound("b/boot.lsu", 2);
  Add(SlotKind::Boot, boot, 60);
  Add(SlotKind::Motion, swing, 80);
  Add(SlotKind::Motion, m_folder / "a" / ".." / "a" / "boot.lsu");
  const auto packed = Pack();
  ASSERT_EQ(packed.Text(), "");
  EXPECT_EQ(packed->files, 3);
  EXPECT_EQ(packed->bytes, std::filesystem::file_size(m_out));

  const auto& entries = m_archives.At(m_out);
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_EQ(entries[0].about.name, "Ember.lscfg");
  EXPECT_EQ(entries[0].content,
            "BOOT\r\nboot.lsu\r\n 60\r\nPWRON\r\n\r\n 100\r\nPWROFF\r\n\r\n 100\r\nIDLE\r\n\r\n 100\r\n"
            "MOTION-2\r\nboot 2.lsu\r\n 80\r\nboot.lsu\r\n 100\r\nIMPACT-0\r\nLOCKUP-0\r\n");
  EXPECT_EQ(entries[1].about.name, "boot.lsu");
  EXPECT_EQ(entries[1].content, support::ReadBytes(boot));
  EXPECT_EQ(entries[2].about.name, "boot 2.lsu");
  EXPECT_EQ(entries[2].content, support::ReadBytes(swing));
}

TEST_F(SetPackerTest, MissingSoundsAreNamedBeforeAnythingIsWritten) {
  Add(SlotKind::Boot, Sound("boot.lsu"));
  const auto gone = Sound("gone.lsu");
  Add(SlotKind::Idle, gone);
  const auto silent = Sound("silent.lsu");
  Add(SlotKind::PwrOn, silent);
  std::filesystem::remove(gone);
  support::WriteSoundFile(silent, std::vector<std::int16_t>(100, 0));
  const auto packed = Pack({"C:\\never\\found.lsu"});
  ASSERT_FALSE(packed);
  EXPECT_EQ(packed.Why().kind, FailureKind::NotFound);
  EXPECT_THAT(packed.Text(), AllOf(HasSubstr("C:\\never\\found.lsu"), HasSubstr("gone.lsu"), HasSubstr("silent.lsu"),
                                   testing::Not(HasSubstr("boot.lsu"))));
  EXPECT_FALSE(std::filesystem::exists(m_out));
}

TEST_F(SetPackerTest, AnEmptySetIsNotPacked) {
  EXPECT_EQ(Pack().Why().kind, FailureKind::NotValid);
  EXPECT_FALSE(std::filesystem::exists(m_out));
}

TEST_F(SetPackerTest, AFileOfThatNameIsLeftAlone) {
  Add(SlotKind::Boot, Sound("boot.lsu"));
  support::WriteBytes(m_out, "mine");
  EXPECT_EQ(Pack().Why().kind, FailureKind::InTheWay);
  EXPECT_EQ(support::ReadBytes(m_out), "mine");
}

TEST_F(SetPackerTest, WhoHasItsTurnMayStopIt) {
  struct Stop {};
  Add(SlotKind::Boot, Sound("boot.lsu"));
  EXPECT_THROW((void)SetPacker(m_archives).Pack(m_configuration, {}, "Ember", m_out, [] { throw Stop(); }), Stop);
  EXPECT_FALSE(std::filesystem::exists(m_out));
}

}  // namespace
}  // namespace kestrin::core::sound
