// SPDX-License-Identifier: MIT
#include "core/sound/import/KeepSound.h"

#include <gmock/gmock.h>

#include <set>
#include <string>

#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;

using support::ReadBytes;
using support::WriteBytes;
using testing::ElementsAre;
using testing::HasSubstr;

class KeepSoundTest : public testing::Test {
 protected:
  KeepSoundTest() { fs::create_directory(m_home); }
  std::set<std::string> Names() const {
    std::set<std::string> names;
    for (const auto& file : fs::directory_iterator(m_home)) names.insert(file.path().filename().string());
    return names;
  }

  support::TemporaryFolder m_folder;
  fs::path m_home = m_folder / "home";
  // Longer than one piece of a copy.
  std::string m_bytes = std::string(200'000, 'x') + "end";
  fs::path m_made = WriteBytes(m_folder / "swing 1.lsu", m_bytes);
  support::RecordingDisk m_disk;
};

TEST_F(KeepSoundTest, PutsAWholeCopyIntoTheFolder) {
  const base::Result<fs::path> kept = KeepSound(m_made, m_home, m_disk);
  ASSERT_TRUE(kept) << kept.Text();
  EXPECT_EQ(*kept, m_home / "swing 1.lsu");
  EXPECT_EQ(ReadBytes(*kept), m_bytes);
  EXPECT_EQ(ReadBytes(m_made), m_bytes) << "what was made stays for another try";
  EXPECT_FALSE(m_disk.flushed.empty()) << "it is on the disk when the power goes";
  EXPECT_THAT(Names(), ElementsAre("swing 1.lsu"));
}

TEST_F(KeepSoundTest, ANameThatIsTakenGetsANumber) {
  WriteBytes(m_home / "SWING 1.LSU", "a");
  WriteBytes(m_home / "swing 1 2.lsu", "b");
  EXPECT_EQ(*KeepSound(m_made, m_home, m_disk), m_home / "swing 1 3.lsu");
  EXPECT_EQ(ReadBytes(m_home / "SWING 1.LSU"), "a");
  EXPECT_EQ(ReadBytes(m_home / "swing 1 2.lsu"), "b");
}

TEST_F(KeepSoundTest, ANameThatSomebodyTakesMeanwhileGetsANumberToo) {
  m_disk.onTakeFreeName = [this](const fs::path& name) {
    if (name.filename() == "swing 1.lsu") WriteBytes(name, "theirs");
    return std::error_code();
  };
  EXPECT_EQ(*KeepSound(m_made, m_home, m_disk), m_home / "swing 1 2.lsu");
  EXPECT_EQ(ReadBytes(m_home / "swing 1.lsu"), "theirs");
}

TEST_F(KeepSoundTest, WhatCannotBeWrittenLeavesNothing) {
  m_disk.onTakeFreeName = [](const fs::path&) { return std::make_error_code(std::errc::no_space_on_device); };
  const base::Result<fs::path> full = KeepSound(m_made, m_home, m_disk);
  ASSERT_FALSE(full);
  EXPECT_EQ(full.Why().kind, base::FailureKind::DiskFull);
  EXPECT_THAT(full.Text(), HasSubstr("swing 1.lsu\" cannot be written: "));
  m_disk.onTakeFreeName = nullptr;
  m_disk.onFlush = [](const fs::path&) { return std::make_error_code(std::errc::io_error); };
  EXPECT_FALSE(KeepSound(m_made, m_home, m_disk));
  m_disk.onFlush = nullptr;
  EXPECT_FALSE(KeepSound(m_folder / "nothing.lsu", m_home, m_disk));
  EXPECT_TRUE(Names().empty());
}

}  // namespace
}  // namespace kestrin::core::sound
