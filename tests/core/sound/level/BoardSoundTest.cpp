// SPDX-License-Identifier: MIT
#include "core/sound/level/BoardSound.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "support/ReferenceCoder.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

using support::SomeSamples;
using support::TemporaryFolder;
using support::WriteSoundFile;
using Samples = std::vector<std::int16_t>;

class BoardSoundTest : public testing::Test {
 protected:
  LSU_SoundFile Sound(const Samples& samples, int volume = 100) {
    LSU_SoundFile sound;
    EXPECT_TRUE(sound.ReadFile(WriteSoundFile(m_path, samples)));
    sound.SetVolume(static_cast<std::int16_t>(volume));
    return sound;
  }

  static Samples All(BoardSound& board) {
    Samples all;
    for (auto block = board.Next(); !block.empty(); block = board.Next())
      all.insert(all.end(), block.begin(), block.end());
    return all;
  }

  TemporaryFolder m_folder;
  std::filesystem::path m_path = m_folder / "hum.lsu";
};

TEST_F(BoardSoundTest, IsOneSampleLateAndWithoutTheFirst) {
  // 999 is the peak, so every magnitude is coded as it is; multiples of four lose nothing.
  Samples file(50, 0);
  file[0] = 500;
  file[1] = 400;
  file[2] = -80;
  file[3] = 996;
  file[48] = -4;
  file[49] = 999;
  BoardSound board(Sound(file));
  EXPECT_EQ(board.Samples(), 50);
  Samples expected(50, 0);
  expected[2] = 12812;  // 400 * 32767 / 1023 = 12812.12
  expected[3] = -2562;  // 80: 2562.42
  expected[4] = 31902;  // 996: 31902.18
  expected[49] = -128;  // 4: 128.12
  EXPECT_EQ(All(board), expected);
  EXPECT_TRUE(board.Ended());
}

TEST_F(BoardSoundTest, IsWhatIsInTheCodedStreamAtEveryLengthAndVolume) {
  // Block ends lie at 16,384 samples behind the first.
  for (const std::size_t count : {49, 50, 51, 16383, 16384, 16385, 16386, 16387, 32769, 32770, 40000})
    for (const int volume : {100, 37, 1, 0, -60, 102}) {
      const Samples file = SomeSamples(count);
      BoardSound board(Sound(file, volume));
      Samples expected;
      for (const int value : support::DecodeStream(support::ReferenceStream(file, 20000, volume)))
        expected.push_back(static_cast<std::int16_t>(std::lround(std::clamp(value, -1023, 1023) * 32767 / 1023.0)));
      EXPECT_EQ(board.Samples(), static_cast<std::int64_t>(expected.size())) << count;
      ASSERT_EQ(All(board), expected) << count << " at " << volume;
      EXPECT_TRUE(board.Ended());
      EXPECT_TRUE(board.Next().empty());
    }
}

TEST_F(BoardSoundTest, HasTheVolumeAndThePeakOfThePlaceThatItSitsIn) {
  const LSU_SoundFile quiet = Sound(Samples(49, 100));
  // A sound that moved up in its list: the peak 100 belongs to the place.
  const Samples loud(49, 50);
  LSU_SoundFile moved;
  ASSERT_TRUE(moved.ReadFile(WriteSoundFile(m_folder / "loud.lsu", loud)));
  LSU_SoundFile place = quiet;
  place.TakeOver(moved);
  BoardSound board(place);
  // 50 of 100 is 499.5 of 1,023, or 15999 of full scale, and the format blurs 3.5 of 1,023.
  const Samples played = All(board);
  ASSERT_EQ(played.size(), 50U);
  for (std::size_t i = 2; i < played.size(); ++i) EXPECT_NEAR(played[i], 16000, 3.5 * 33) << i;
}

TEST_F(BoardSoundTest, ASoundThatIsTooLoudEndsWithTheAdviceOfTheCoder) {
  const LSU_SoundFile sound = Sound(SomeSamples(40000), 103);
  BoardSound board(sound);
  All(board);
  EXPECT_EQ(board.Ended().Why(), sound.CheckCodable().Why());
  EXPECT_NE(board.Ended().Text().find("too loud at 103 %"), std::string::npos) << board.Ended().Text();
}

TEST_F(BoardSoundTest, AFileThatIsGoneOrShorterEndsWithItsReason) {
  const LSU_SoundFile sound = Sound(SomeSamples(40000));
  WriteSoundFile(m_path, SomeSamples(20000));
  BoardSound shorter(sound);
  EXPECT_EQ(All(shorter).size(), 16386U);  // the whole block and the two silent samples before it
  EXPECT_EQ(shorter.Ended().Why().kind, base::FailureKind::Changed);
  std::filesystem::remove(m_path);
  BoardSound gone(sound);
  EXPECT_TRUE(All(gone).empty());
  EXPECT_EQ(gone.Ended().Why().kind, base::FailureKind::NotFound);
}

TEST_F(BoardSoundTest, AFileThatComesBackWhileItIsReadHasChangedAllTheSame) {
  const LSU_SoundFile sound = Sound(SomeSamples(100));
  std::filesystem::remove(m_path);
  BoardSound board(sound);
  EXPECT_TRUE(All(board).empty());
  WriteSoundFile(m_path, SomeSamples(100));
  EXPECT_EQ(board.Ended().Why().kind, base::FailureKind::Changed);
}

TEST_F(BoardSoundTest, ASoundThatNoBoardCanHoldIsNotRead) {
  LSU_SoundFile sound;
  WriteSoundFile(m_path, SomeSamples(100));
  // 11,184,811 samples are 16,777,218 bytes, three above what 24 bits hold.
  std::filesystem::resize_file(m_path, 4 + 2 * std::uintmax_t{11184811});
  ASSERT_TRUE(sound.ReadFile(m_path));
  BoardSound board(sound);
  EXPECT_TRUE(All(board).empty());
  EXPECT_EQ(board.Ended().Why().kind, base::FailureKind::NotValid);
}

TEST_F(BoardSoundTest, NothingIsPlayedOfNoSound) {
  BoardSound board{LSU_SoundFile()};
  EXPECT_EQ(board.Samples(), 0);
  EXPECT_TRUE(board.Next().empty());
  EXPECT_TRUE(board.Ended());
}

}  // namespace
}  // namespace kestrin::core::sound
