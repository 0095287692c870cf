// SPDX-License-Identifier: MIT
#include "core/sound/WaveformReader.h"

#include <gtest/gtest.h>

#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

using support::TemporaryFolder;
using support::WriteBytes;
using support::WriteSoundFile;
using Columns = std::vector<WaveformColumn>;

TEST(WaveformReaderTest, EveryColumnHoldsItsLowestAndHighestSample) {
  TemporaryFolder folder;
  const std::vector<std::int16_t> samples{1, -5, 7, 0, -32768, 32767, -3, -2};
  const auto path = WriteSoundFile(folder / "a.lsu", samples);
  EXPECT_EQ(WaveformReader::Read(path, 4), (Columns{{-5, 1}, {0, 7}, {-32768, 32767}, {-3, -2}}));
  EXPECT_EQ(WaveformReader::Read(path, 1), (Columns{{-32768, 32767}}));
}

TEST(WaveformReaderTest, StretchesThatDoNotDivideEvenlyDifferByOneSample) {
  TemporaryFolder folder;
  const std::vector<std::int16_t> samples{1, 2, 3, 4, 5, 6, 7};
  // Seven samples in three columns: 0 to 2, 2 to 4, 4 to 7.
  EXPECT_EQ(WaveformReader::Read(WriteSoundFile(folder / "a.lsu", samples), 3), (Columns{{1, 2}, {3, 4}, {5, 7}}));
}

TEST(WaveformReaderTest, ThereAreNoMoreColumnsThanSamples) {
  TemporaryFolder folder;
  const std::vector<std::int16_t> samples{4, -4};
  EXPECT_EQ(WaveformReader::Read(WriteSoundFile(folder / "a.lsu", samples), 100), (Columns{{4, 4}, {-4, -4}}));
}

TEST(WaveformReaderTest, ColumnsReachAcrossBlocks) {
  TemporaryFolder folder;
  std::vector<std::int16_t> samples(50000, 10);
  samples[0] = -1;
  samples[24999] = 20;
  samples[25000] = -7;
  samples[49999] = 99;
  EXPECT_EQ(WaveformReader::Read(WriteSoundFile(folder / "a.lsu", samples), 2), (Columns{{-1, 20}, {-7, 99}}));
}

TEST(WaveformReaderTest, AFileWithoutSamplesHasNoShape) {
  TemporaryFolder folder;
  EXPECT_EQ(WaveformReader::Read(folder / "missing.lsu", 10), std::nullopt);
  EXPECT_EQ(WaveformReader::Read(folder.Path(), 10), std::nullopt);
  EXPECT_EQ(WaveformReader::Read(WriteBytes(folder / "a.lsu", "1234"), 10), std::nullopt);
  EXPECT_EQ(WaveformReader::Read(WriteBytes(folder / "b.lsu", "1"), 10), std::nullopt);
  EXPECT_EQ(WaveformReader::Read(WriteBytes(folder / "c.lsu", "123456"), 0), std::nullopt);
}

TEST(WaveformReaderTest, ItStopsBetweenBlocksWhenItIsNoLongerWanted) {
  TemporaryFolder folder;
  const std::vector<std::int16_t> samples(200000, 1);
  const auto path = WriteSoundFile(folder / "a.lsu", samples);
  int asked = 0;
  EXPECT_EQ(WaveformReader::Read(path, 100, [&] { return ++asked < 3; }), std::nullopt);
  EXPECT_EQ(asked, 3);
  EXPECT_TRUE(WaveformReader::Read(path, 100, [] { return true; }).has_value());
}

TEST(WaveformReaderTest, AsOnTheBoardItIsWhatTheBoardPlays) {
  TemporaryFolder folder;
  // 999 is the peak: magnitudes are what they are. The first sample is lost, and the last of an even count.
  std::vector<std::int16_t> samples(50, 0);
  samples[0] = -999;
  samples[1] = 400;
  samples[2] = -80;
  samples[48] = 996;
  samples[49] = -999;
  const auto path = WriteSoundFile(folder / "a.lsu", samples);
  // 12812 is 400 of 1,023 steps, 2562 is 80, 31902 is 996.
  EXPECT_EQ(WaveformReader::Read(HeardSound{path, true}, 2), (Columns{{-2562, 12812}, {0, 31902}}));
  EXPECT_EQ(WaveformReader::Read(HeardSound{path, false}, 2), (Columns{{-999, 400}, {-999, 996}}));
  LSU_SoundFile half;
  ASSERT_TRUE(half.ReadFile(path));
  half.SetVolume(50);
  // 200, 40 and 498 of 1,023.
  EXPECT_EQ(WaveformReader::Read(HeardSound{path, true, half}, 2), (Columns{{-1281, 6406}, {0, 15951}}));
  half.SetVolume(150);
  EXPECT_EQ(WaveformReader::Read(HeardSound{path, true, half}, 2), std::nullopt);
  EXPECT_EQ(WaveformReader::Read(HeardSound{folder / "none.lsu", true}, 2), std::nullopt);
}

TEST(WaveformReaderTest, AsOnTheBoardItStopsWhileItMeasuresAndWhileItReads) {
  TemporaryFolder folder;
  const auto path = WriteSoundFile(folder / "a.lsu", std::vector<std::int16_t>(200000, 1));
  // 13 blocks are measured, then 13 read.
  for (const int last : {1, 13, 14, 20}) {
    int asked = 0;
    EXPECT_EQ(WaveformReader::Read(HeardSound{path, true}, 100, [&] { return ++asked < last; }), std::nullopt);
    EXPECT_EQ(asked, last);
  }
  EXPECT_TRUE(WaveformReader::Read(HeardSound{path, true}, 100, [] { return true; }).has_value());
}

}  // namespace
}  // namespace kestrin::core::sound
