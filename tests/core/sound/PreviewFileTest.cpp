// SPDX-License-Identifier: MIT
#include "core/sound/PreviewFile.h"

#include <gtest/gtest.h>

#include <array>

#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

using support::TemporaryFolder;
using support::WriteBytes;
using support::WriteSoundFile;

TEST(PreviewFile, IsWrittenIntoTheFirstFolderThatTakesIt) {
  const TemporaryFolder folder;
  const auto samples = support::SomeSamples(60);
  const auto sound = WriteSoundFile(folder / "hum.lsu", samples);
  // A file stands where the first folder would have to be.
  const std::array<std::filesystem::path, 3> folders{WriteBytes(folder / "file", "x"), "", folder / "new" / "place"};
  const base::Result<std::filesystem::path> written = PreviewFile::Write(sound, folders);
  ASSERT_TRUE(written) << written.Text();
  EXPECT_EQ(*written, folder / "new" / "place" / "temp.wav");
  EXPECT_EQ(support::ReadBytes(*written).substr(44), support::SoundFileBytes(samples).substr(4));
}

TEST(PreviewFile, SaysThatNoFolderTakesIt) {
  const TemporaryFolder folder;
  const auto sound = WriteSoundFile(folder / "hum.lsu", support::SomeSamples(60));
  const std::array<std::filesystem::path, 1> folders{WriteBytes(folder / "file", "x")};
  const base::Result<std::filesystem::path> written = PreviewFile::Write(sound, folders);
  ASSERT_FALSE(written);
  EXPECT_EQ(written.Why().kind, base::FailureKind::Failed);
  EXPECT_NE(written.Text().find("temp.wav"), std::string::npos);
}

TEST(PreviewFile, NamesAFileThatIsNoSound) {
  const TemporaryFolder folder;
  const std::array<std::filesystem::path, 1> folders{folder.Path()};
  const base::Result<std::filesystem::path> written = PreviewFile::Write(folder / "missing.lsu", folders);
  ASSERT_FALSE(written);
  EXPECT_EQ(written.Why().kind, base::FailureKind::NotValid);
  EXPECT_NE(written.Text().find("missing.lsu"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(folder / "temp.wav"));
}

}  // namespace
}  // namespace kestrin::core::sound
