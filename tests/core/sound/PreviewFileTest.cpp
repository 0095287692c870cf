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
  const PreviewFile::Written written = PreviewFile::Write(sound, folders);
  EXPECT_EQ(written.problem, "");
  EXPECT_EQ(written.path, folder / "new" / "place" / "temp.wav");
  EXPECT_EQ(support::ReadBytes(written.path).substr(44), support::SoundFileBytes(samples).substr(4));
}

TEST(PreviewFile, SaysThatNoFolderTakesIt) {
  const TemporaryFolder folder;
  const auto sound = WriteSoundFile(folder / "hum.lsu", support::SomeSamples(60));
  const std::array<std::filesystem::path, 1> folders{WriteBytes(folder / "file", "x")};
  const PreviewFile::Written written = PreviewFile::Write(sound, folders);
  EXPECT_TRUE(written.path.empty());
  EXPECT_NE(written.problem.find("temp.wav"), std::string::npos);
}

TEST(PreviewFile, NamesAFileThatIsNoSound) {
  const TemporaryFolder folder;
  const std::array<std::filesystem::path, 1> folders{folder.Path()};
  const PreviewFile::Written written = PreviewFile::Write(folder / "missing.lsu", folders);
  EXPECT_NE(written.problem.find("missing.lsu"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(folder / "temp.wav"));
}

}  // namespace
}  // namespace kestrin::core::sound
