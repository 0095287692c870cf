// SPDX-License-Identifier: MIT
#include "core/sound/SampleReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

using State = SampleReader::State;
using support::SomeSamples;
using support::TemporaryFolder;
using support::WriteBytes;
using support::WriteSoundFile;

std::vector<std::int16_t> ReadAll(SampleReader& reader, std::size_t most = SampleReader::kBlock) {
  std::vector<std::int16_t> samples;
  for (auto block = reader.Next(most); !block.empty(); block = reader.Next(most))
    samples.insert(samples.end(), block.begin(), block.end());
  return samples;
}

TEST(SampleReader, SamplesAreLittleEndianBehindFourBytesThatDoNotCount) {
  const TemporaryFolder folder;
  SampleReader reader(WriteBytes(folder / "a.lsu", {"\xFF\xFF\xFF\xFF\x34\x12\xFE\xFF\x00\x80", 10}));
  EXPECT_EQ(ReadAll(reader), (std::vector<std::int16_t>{0x1234, -2, -32768}));
  EXPECT_EQ(reader.GetState(), State::Good);
}

TEST(SampleReader, HalfASampleAtTheEndIsNone) {
  const TemporaryFolder folder;
  SampleReader reader(WriteBytes(folder / "a.lsu", {"head\x01\x00\x02", 7}));
  EXPECT_EQ(ReadAll(reader), (std::vector<std::int16_t>{1}));
  EXPECT_EQ(reader.GetState(), State::Good);
}

TEST(SampleReader, AFileShorterThanItsHeaderHasNoSamples) {
  const TemporaryFolder folder;
  for (const char* bytes : {"", "abc", "abcd", "abcde"}) {
    SampleReader reader(WriteBytes(folder / "a.lsu", bytes));
    EXPECT_TRUE(reader.Next().empty()) << bytes;
    EXPECT_EQ(reader.GetState(), State::Good) << bytes;
  }
}

TEST(SampleReader, BlocksFollowOneAnotherWithoutAGap) {
  const TemporaryFolder folder;
  for (const std::size_t count :
       {SampleReader::kBlock - 1, SampleReader::kBlock, SampleReader::kBlock + 1, 3 * SampleReader::kBlock + 7}) {
    const auto samples = SomeSamples(count);
    const auto path = WriteSoundFile(folder / "a.lsu", samples);
    for (const std::size_t most : {std::size_t{7}, std::size_t{1000}, SampleReader::kBlock, 2 * SampleReader::kBlock}) {
      SampleReader reader(path);
      EXPECT_EQ(ReadAll(reader, most), samples) << count << " in blocks of " << most;
    }
  }
}

TEST(SampleReader, NoBlockIsLongerThanAskedFor) {
  const TemporaryFolder folder;
  SampleReader reader(WriteSoundFile(folder / "a.lsu", SomeSamples(100)));
  EXPECT_EQ(reader.Next(1).size(), 1U);
  EXPECT_EQ(reader.Next(60).size(), 60U);
  EXPECT_EQ(reader.Next(60).size(), 39U);
  EXPECT_EQ(reader.Next(60).size(), 0U);
}

TEST(SampleReader, AMissingFileIsToldAndNotCreated) {
  const TemporaryFolder folder;
  SampleReader reader(folder / "none.lsu");
  EXPECT_EQ(reader.GetState(), State::Missing);
  EXPECT_TRUE(reader.Next().empty());
  EXPECT_FALSE(std::filesystem::exists(folder / "none.lsu"));
}

TEST(SampleReader, AFolderIsNoFile) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "a.lsu");
  EXPECT_EQ(SampleReader(folder / "a.lsu").GetState(), State::NotAFile);
}

#ifdef __linux__
TEST(SampleReader, ADeviceIsNoFile) { EXPECT_EQ(SampleReader("/dev/zero").GetState(), State::NotAFile); }

TEST(SampleReader, AReadThatFailsIsToldApartFromTheEnd) {
  // The memory of this process as a file: a regular one that opens, and whose first bytes can never be read.
  SampleReader reader("/proc/self/mem");
  EXPECT_TRUE(reader.Next().empty());
  EXPECT_EQ(reader.GetState(), State::Failed);
}
#endif

}  // namespace
}  // namespace kestrin::core::sound
