// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/sound/LSU_SoundFile.h"
#include "core/sound/SampleReader.h"
#include "support/ReferenceCoder.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

using support::ReferenceStream;
using support::SomeSamples;
using support::TemporaryFolder;
using support::WriteSoundFile;
using Bytes = std::vector<std::uint8_t>;
using Samples = std::vector<std::int16_t>;

Bytes StreamOf(const LSU_SoundFile& file) {
  Bytes bytes;
  EXPECT_TRUE(file.GetBytes(bytes, 0, static_cast<std::size_t>(file.NrOfBytes())));
  return bytes;
}

class LSU_SoundFileCode : public testing::Test {
 protected:
  void Read(const Samples& samples, int volume = 100) {
    ASSERT_TRUE(m_file.ReadFile(WriteSoundFile(m_folder / "a.lsu", samples)));
    m_file.SetVolume(static_cast<std::int16_t>(volume));
  }
  Bytes Code(const Samples& samples, int volume = 100) {
    Read(samples, volume);
    EXPECT_EQ(m_file.CheckCodable().Text(), "");
    EXPECT_TRUE(m_file.Code());
    return StreamOf(m_file);
  }

  TemporaryFolder m_folder;
  LSU_SoundFile m_file;
};

TEST_F(LSU_SoundFileCode, AnEvenCountLosesItsFirstAndItsLastSample) {
  // Peak 999: every sample codes to itself.
  Samples samples(50, 0);
  samples[0] = 999;
  samples[1] = 998;
  samples[2] = -997;
  samples[47] = 6;
  samples[48] = -9;
  samples[49] = 999;
  const Bytes stream = Code(samples);
  ASSERT_EQ(stream.size(), 75U);
  // 998 = 4 * 249 + 2: two units are eight quarters; 997 = 4 * 249 + 1.
  const Bytes begin{0, 0, 0, 249, 64 + 8 + 1, 249};
  const Bytes end{1, 64 + 8 + 1, 2};  // 6 = 4 + 2, 9 = 4 * 2 + 1
  EXPECT_EQ(Bytes(stream.begin(), stream.begin() + 6), begin);
  EXPECT_EQ(Bytes(stream.end() - 3, stream.end()), end);
  EXPECT_EQ(std::count(stream.begin() + 6, stream.end() - 3, 0), 75 - 9);
}

TEST_F(LSU_SoundFileCode, AnOddCountLosesOnlyItsFirstSample) {
  Samples samples(51, 0);
  samples[0] = 999;
  samples[49] = 6;
  samples[50] = -9;
  const Bytes stream = Code(samples);
  ASSERT_EQ(stream.size(), 78U);
  EXPECT_EQ(Bytes(stream.end() - 3, stream.end()), (Bytes{1, 64 + 8 + 1, 2}));
  EXPECT_EQ(std::count(stream.begin(), stream.end() - 3, 0), 75);
}

TEST_F(LSU_SoundFileCode, EverySampleCountFrom49OnIsCodedAsDescribed) {
  for (std::size_t count = 49; count <= 200; ++count) {
    const Samples samples = SomeSamples(count, 25000, static_cast<unsigned>(count));
    ASSERT_EQ(Code(samples), ReferenceStream(samples, 25000, 100)) << count;
    ASSERT_EQ(m_file.NrOfBytes(), static_cast<int>((count + 1) / 2 * 3)) << count;
    ASSERT_EQ(LSU_SoundFile::CodedBytes(m_file.NrOfSamples()), m_file.NrOfBytes());
  }
}

TEST_F(LSU_SoundFileCode, CountsAroundTheBlocksOfTheReaderAreCodedAsDescribed) {
  for (const std::size_t blocks : {std::size_t{1}, std::size_t{2}})
    for (std::size_t count = blocks * SampleReader::kBlock - 3; count <= blocks * SampleReader::kBlock + 3; ++count) {
      const Samples samples = SomeSamples(count, 32767, static_cast<unsigned>(count));
      ASSERT_EQ(Code(samples, 77), ReferenceStream(samples, 32767, 77)) << count;
    }
}

TEST_F(LSU_SoundFileCode, EverySampleValueIsCodedAsDescribed) {
  Samples samples(65537);
  std::iota(samples.begin() + 1, samples.end(), std::int16_t{-32768});
  for (const int volume : {-100, 1, 33, 50, 100, 102})
    ASSERT_EQ(Code(samples, volume), ReferenceStream(samples, 32768, volume)) << volume;
}

TEST_F(LSU_SoundFileCode, ALoudestSampleOfMinus32768HasMagnitude999AndTheSignBit) {
  Samples samples(49, 0);
  samples[1] = -32768;
  samples[4] = -32768;
  const Bytes stream = Code(samples);
  // 999 = 4 * 249 + 3: of a first sample the 3 stands as 12 quarters, of a second as it is.
  EXPECT_EQ(Bytes(stream.begin() + 3, stream.begin() + 9), (Bytes{249, 128 + 12, 0, 0, 64 + 3, 249}));
}

TEST_F(LSU_SoundFileCode, VolumeFiftyHalvesEveryMagnitude) {
  Samples samples(49, 0);
  samples[1] = 999;
  samples[2] = 999;
  samples[3] = 400;
  samples[4] = -400;
  // 499.5 rounds to the even 500 = 4 * 125, and is two quarters below it; 200 = 4 * 50.
  const Bytes stream = Code(samples, 50);
  EXPECT_EQ(Bytes(stream.begin() + 3, stream.begin() + 9), (Bytes{125, 2, 125, 50, 64, 50}));
}

TEST_F(LSU_SoundFileCode, AtVolumeZeroTheStreamIsAllZeros) { EXPECT_EQ(Code(SomeSamples(100), 0), Bytes(150, 0)); }

TEST_F(LSU_SoundFileCode, CodingAgainFollowsTheVolume) {
  const Samples samples = SomeSamples(1001);
  Read(samples);
  for (const int volume : {100, 40, 102, -7}) {
    m_file.SetVolume(static_cast<std::int16_t>(volume));
    ASSERT_TRUE(m_file.Code());
    EXPECT_EQ(StreamOf(m_file), ReferenceStream(samples, 20000, volume)) << volume;
  }
}

TEST_F(LSU_SoundFileCode, TheChecksumIsTheSumOfTheBytesModulo65536) {
  Samples samples(1000, 0);
  for (std::size_t i = 1; i < samples.size(); ++i) samples[i] = 999;
  Code(samples);
  // 499 triples of 249, 12 + 3, 249 are 499 * 513 = 255987 = 3 * 65536 + 59379.
  EXPECT_EQ(m_file.GetFileCRC(), 59379);
}

TEST_F(LSU_SoundFileCode, SlicesInsideTheStreamAreCopiedOthersLeaveTheArrayAlone) {
  const Bytes stream = Code(SomeSamples(100));
  const std::size_t length = stream.size();
  Bytes slice{1, 2, 3};
  EXPECT_FALSE(m_file.GetBytes(slice, length - 10, 11));
  EXPECT_FALSE(m_file.GetBytes(slice, length, 1));
  EXPECT_FALSE(m_file.GetBytes(slice, length + 1, 0));
  EXPECT_FALSE(m_file.GetBytes(slice, 1, std::numeric_limits<std::size_t>::max()));
  EXPECT_EQ(slice, (Bytes{1, 2, 3}));
  EXPECT_TRUE(m_file.GetBytes(slice, length - 10, 10));
  EXPECT_EQ(slice, Bytes(stream.end() - 10, stream.end()));
  EXPECT_TRUE(m_file.GetBytes(slice, 5, 3));
  EXPECT_EQ(slice, Bytes(stream.begin() + 5, stream.begin() + 8));
  EXPECT_TRUE(m_file.GetBytes(slice, length, 0));
  EXPECT_TRUE(slice.empty());
}

TEST_F(LSU_SoundFileCode, WithoutAFileTheStreamIsEmpty) {
  EXPECT_EQ(m_file.CheckCodable().Text(), "");
  EXPECT_TRUE(m_file.Code());
  EXPECT_EQ(m_file.NrOfBytes(), 0);
  EXPECT_EQ(m_file.GetFileCRC(), 0);
}

TEST_F(LSU_SoundFileCode, ThePumpGetsItsTurnOftenButNotForEveryPair) {
  Read(SomeSamples(200000));
  int turns = 0;
  ASSERT_TRUE(m_file.Code([&] { ++turns; }));
  EXPECT_GE(turns, 200000 / 50000);
  EXPECT_LE(turns, 200000 / 10000);
  turns = 0;
  EXPECT_EQ(m_file.CheckCodable([&] { ++turns; }).Text(), "");
  EXPECT_GE(turns, 200000 / 50000);
}

TEST_F(LSU_SoundFileCode, WhenThePumpThrowsThereIsNoHalfStream) {
  const Samples samples = SomeSamples(200000);
  Code(samples);
  EXPECT_THROW((void)m_file.Code([] { throw std::runtime_error("enough"); }), std::runtime_error);
  EXPECT_EQ(m_file.NrOfBytes(), 0);
  EXPECT_EQ(m_file.GetFileCRC(), 0);
  EXPECT_TRUE(m_file.Code());
  EXPECT_EQ(StreamOf(m_file), ReferenceStream(samples, 20000, 100));
}

TEST_F(LSU_SoundFileCode, AVolumeThatNoLongerFitsTenBitsIsAnErrorNamingTheFile) {
  Samples samples(100, 5);
  samples[1] = 20000;
  for (const int volume : {103, 110, 32767, -103, -32768}) {
    Read(samples, volume);
    const std::string text =
        "\"" + (m_folder / "a.lsu").string() + "\" is too loud at " + std::to_string(volume) +
        (volume > 0 ? " %. Lower its volume to 102 % or less." : " %. Set its volume to between -102 % and 102 %.");
    EXPECT_EQ(m_file.CheckCodable().Text(), text);
    try {
      (void)m_file.Code();
      ADD_FAILURE() << volume << " was coded";
    } catch (const std::overflow_error& error) {
      EXPECT_EQ(error.what(), text);
    }
    EXPECT_EQ(m_file.NrOfBytes(), 0);
    EXPECT_EQ(m_file.GetFileCRC(), 0);
  }
}

TEST_F(LSU_SoundFileCode, AVolumeOf102StillFits) {
  const Samples samples = SomeSamples(100);
  EXPECT_EQ(Code(samples, 102), ReferenceStream(samples, 20000, 102));
  EXPECT_EQ(Code(samples, -102), ReferenceStream(samples, 20000, -102));
}

TEST_F(LSU_SoundFileCode, OnlySamplesThatAreCodedCanBeTooLoud) {
  // The peak stands in the first sample, in the last of an even count, or in both: never coded.
  Samples samples(50, 5);
  samples[0] = 20000;
  EXPECT_EQ(Code(samples, 110), ReferenceStream(samples, 20000, 110));
  samples[0] = 5;
  samples[49] = -20000;
  EXPECT_EQ(Code(samples, 110), ReferenceStream(samples, 20000, 110));
  // The last of an odd count is coded.
  samples.push_back(-20000);
  Read(samples, 110);
  EXPECT_THROW((void)m_file.Code(), std::overflow_error);
}

TEST_F(LSU_SoundFileCode, TooLoudInALaterBlockLeavesNothingOfTheEarlierOnes) {
  Samples samples(3 * SampleReader::kBlock, 5);
  samples[samples.size() - 2] = 20000;
  Read(samples, 110);
  EXPECT_THROW((void)m_file.Code(), std::overflow_error);
  EXPECT_EQ(m_file.NrOfBytes(), 0);
}

TEST_F(LSU_SoundFileCode, AnEntryThatMovedIsScaledByThePeakOfItsNewPosition) {
  LSU_SoundFile position;
  ASSERT_TRUE(position.ReadFile(WriteSoundFile(m_folder / "loud.lsu", SomeSamples(80, 30000))));
  position.SetVolume(60);
  ASSERT_TRUE(position.Code());
  const Bytes streamBefore = StreamOf(position);

  const Samples samples = SomeSamples(101, 10000);
  Code(samples, 90);
  m_file.SetStartAddress(4711);
  position.TakeOver(m_file);
  EXPECT_EQ(position.FileNameAndPath(), m_folder / "a.lsu");
  EXPECT_EQ(position.NrOfSamples(), 101);
  EXPECT_EQ(position.NrOfBytes(), 153);
  EXPECT_EQ(position.StartAddress(), 4711);
  EXPECT_EQ(position.Peak(), 30000);
  EXPECT_EQ(position.Volume(), 60);

  // Until it is coded again the position has its old stream, which is shorter than the length it took over.
  Bytes bytes;
  EXPECT_TRUE(position.GetBytes(bytes, 0, streamBefore.size()));
  EXPECT_EQ(bytes, streamBefore);
  EXPECT_FALSE(position.GetBytes(bytes, 0, 153));

  ASSERT_TRUE(position.Code());
  EXPECT_EQ(StreamOf(position), ReferenceStream(samples, 30000, 60));
}

TEST_F(LSU_SoundFileCode, AnEntryThatMovedToAQuieterPositionMayBecomeTooLoud) {
  // Of a place with the peak 10, no volume but 0 % takes a sound of 10000: lowering it is no advice.
  for (const std::int16_t peak : {std::int16_t{10}, std::int16_t{100}, std::int16_t{9000}}) {
    LSU_SoundFile position;
    ASSERT_TRUE(position.ReadFile(WriteSoundFile(m_folder / "quiet.lsu", SomeSamples(80, peak))));
    Read(SomeSamples(101, 10000));
    position.TakeOver(m_file);
    const std::string text = "\"" + (m_folder / "a.lsu").string() +
                             "\" is louder than was measured for its place in the list. Take it out and add it again.";
    EXPECT_EQ(position.CheckCodable().Text(), text);
    try {
      (void)position.Code();
      ADD_FAILURE() << peak << " was coded";
    } catch (const std::overflow_error& error) {
      EXPECT_EQ(error.what(), text);
    }
    // And it helps.
    LSU_SoundFile again;
    ASSERT_TRUE(again.ReadFile(m_folder / "a.lsu"));
    EXPECT_EQ(again.CheckCodable().Text(), "");
  }
}

TEST_F(LSU_SoundFileCode, ThreeBytesHoldTwoSamplesAndAnOddOneCountsAsTwo) {
  struct Row {
    std::int32_t samples;
    std::int64_t bytes;
  };
  for (const Row& row :
       {Row{0, 0}, {1, 3}, {2, 3}, {3, 6}, {4, 6}, {5, 9}, {6, 9}, {48000, 72000}, {2147483647, 3221225472}})
    EXPECT_EQ(LSU_SoundFile::CodedBytes(row.samples), row.bytes) << row.samples;
}

TEST_F(LSU_SoundFileCode, AStreamIsAtMostAsLongAsTheTableCanSay) {
  // 24 bits: 16,777,215 bytes are 5,592,405 pairs.
  const auto path = WriteSoundFile(m_folder / "a.lsu", SomeSamples(100));
  const auto readWith = [&](std::uintmax_t samples) {
    std::filesystem::resize_file(path, 4 + 2 * samples);
    ASSERT_TRUE(m_file.ReadFile(path));
  };
  readWith(11184810);
  EXPECT_EQ(m_file.CheckCodable().Text(), "");
  EXPECT_TRUE(m_file.Code());
  EXPECT_EQ(m_file.NrOfBytes(), 16777215);
  readWith(11184811);
  EXPECT_FALSE(m_file.Code());
  EXPECT_EQ(m_file.NrOfBytes(), 0);
  const base::Result<> codable = m_file.CheckCodable();
  ASSERT_FALSE(codable);
  EXPECT_EQ(codable.Why(),
            (base::Failure{base::FailureKind::NotValid,
                           "\"" + path.string() + "\" is longer than any board can hold. Choose a shorter sound."}));
}

TEST_F(LSU_SoundFileCode, RemovingTakesNameAndSamplesOnly) {
  const Bytes stream = Code(SomeSamples(100, 500), 70);
  m_file.SetStartAddress(600);
  m_file.Remove();
  EXPECT_TRUE(m_file.FileNameAndPath().empty());
  EXPECT_EQ(m_file.NrOfSamples(), 0);
  EXPECT_EQ(m_file.Volume(), 70);
  EXPECT_EQ(m_file.Peak(), 500);
  EXPECT_EQ(m_file.StartAddress(), 600);
  EXPECT_EQ(StreamOf(m_file), stream);
  ASSERT_TRUE(m_file.Code());
  EXPECT_EQ(m_file.NrOfBytes(), 0);
}

TEST_F(LSU_SoundFileCode, DecodedTheStreamIsTheSoundWithinTheFormatsQuantisation) {
  const Samples samples = SomeSamples(1001, 32767);
  const std::vector<int> values = support::DecodeStream(Code(samples, 80));
  ASSERT_EQ(values.size(), 1002U);
  for (std::size_t i = 1; i < samples.size(); ++i)
    ASSERT_NEAR(values[i + 1], samples[i] * (999.0 / 32767) * 0.8, i % 2 == 1 ? 1.5 : 3.5) << i;
}

}  // namespace
}  // namespace kestrin::core::sound
