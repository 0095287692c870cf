// SPDX-License-Identifier: MIT
#include "core/sound/PreviewFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "support/ReferenceCoder.h"
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

class PreviewAsOnBoard : public testing::Test {
 protected:
  [[nodiscard]] base::Result<std::filesystem::path> Write(const HeardSound& sound) const {
    const std::array<std::filesystem::path, 1> folders{m_folder.Path()};
    return PreviewFile::Write(sound, folders);
  }

  /// The WAV file of what a board makes of these samples: worked out by the plain reading of the reference.
  static std::string Wav(const std::vector<std::int16_t>& file, int peak, int volume) {
    std::vector<std::int16_t> samples;
    for (const int value : support::DecodeStream(support::ReferenceStream(file, peak, volume)))
      samples.push_back(static_cast<std::int16_t>(std::lround(std::clamp(value, -1023, 1023) * 32767 / 1023.0)));
    const std::size_t bytes = 2 * samples.size();
    std::string wav(44, '\0');
    wav.replace(0, 4, "RIFF").replace(8, 8, "WAVEfmt ").replace(36, 4, "data");
    const auto put = [&wav](std::size_t at, std::size_t number, int width) {
      for (int i = 0; i < width; ++i)
        wav[at + static_cast<std::size_t>(i)] = static_cast<char>(number >> (8 * i) & 255);
    };
    put(4, bytes + 36, 4);
    put(16, 16, 4);
    put(20, 1, 2);
    put(22, 1, 2);
    put(24, 48000, 4);
    put(28, 96000, 4);
    put(32, 2, 2);
    put(34, 16, 2);
    put(40, bytes, 4);
    return wav + support::SoundFileBytes(samples).substr(4);
  }

  TemporaryFolder m_folder;
};

TEST_F(PreviewAsOnBoard, IsTheCodedSoundDecodedAgain) {
  for (const std::size_t count : {60, 61, 40000}) {
    const auto samples = support::SomeSamples(count, 12000);
    const HeardSound sound{WriteSoundFile(m_folder / "hum.lsu", samples), true};
    const auto written = Write(sound);
    ASSERT_TRUE(written) << written.Text();
    EXPECT_TRUE(support::ReadBytes(*written) == Wav(samples, 12000, 100)) << count;
  }
}

TEST_F(PreviewAsOnBoard, HasTheVolumeAndThePeakOfItsPlace) {
  const auto samples = support::SomeSamples(60, 5000);
  LSU_SoundFile place;
  ASSERT_TRUE(place.ReadFile(WriteSoundFile(m_folder / "before.lsu", support::SomeSamples(60, 20000))));
  LSU_SoundFile moved;
  ASSERT_TRUE(moved.ReadFile(WriteSoundFile(m_folder / "hum.lsu", samples)));
  place.TakeOver(moved);
  place.SetVolume(30);
  ASSERT_TRUE(Write({m_folder / "hum.lsu", true, place}));
  EXPECT_EQ(support::ReadBytes(m_folder / "temp.wav"), Wav(samples, 20000, 30));
  // As the file holds it, the place does not matter.
  ASSERT_TRUE(Write({m_folder / "hum.lsu", false, place}));
  EXPECT_EQ(support::ReadBytes(m_folder / "temp.wav").substr(44), support::SoundFileBytes(samples).substr(4));
}

TEST_F(PreviewAsOnBoard, SaysWhatABoardCannotPlay) {
  LSU_SoundFile loud;
  ASSERT_TRUE(loud.ReadFile(WriteSoundFile(m_folder / "hum.lsu", support::SomeSamples(60))));
  loud.SetVolume(150);
  const auto written = Write({m_folder / "hum.lsu", true, loud});
  ASSERT_FALSE(written);
  EXPECT_NE(written.Text().find("too loud at 150 %"), std::string::npos) << written.Text();
  EXPECT_FALSE(std::filesystem::exists(m_folder / "temp.wav"));
  EXPECT_EQ(Write({m_folder / "none.lsu", true}).Why().kind, base::FailureKind::NotValid);
}

TEST_F(PreviewAsOnBoard, NobodyHearsAnOlderSoundInItsPlace) {
  const auto sound = WriteSoundFile(m_folder / "hum.lsu", support::SomeSamples(60));
  std::filesystem::create_directory(m_folder / "temp.wav");
  const auto written = Write({sound, true});
  ASSERT_FALSE(written);
  EXPECT_NE(written.Text().find("temp.wav"), std::string::npos);
}

TEST(HeardSound, IsAnotherWhenItSoundsOtherwise) {
  const TemporaryFolder folder;
  const auto path = WriteSoundFile(folder / "hum.lsu", support::SomeSamples(60));
  LSU_SoundFile placed;
  ASSERT_TRUE(placed.ReadFile(path));
  const HeardSound plain{path};
  const HeardSound board{path, true, placed};
  EXPECT_EQ(board, (HeardSound{path, true, placed}));
  EXPECT_NE(board, plain);
  EXPECT_NE(board, (HeardSound{path, true}));
  EXPECT_NE(board, (HeardSound{folder / "other.lsu", true, placed}));
  LSU_SoundFile lower = placed;
  lower.SetVolume(99);
  EXPECT_NE(board, (HeardSound{path, true, lower}));
  // As the file holds it there is no volume.
  EXPECT_EQ(plain, (HeardSound{path, false, lower}));
}

}  // namespace
}  // namespace kestrin::core::sound
