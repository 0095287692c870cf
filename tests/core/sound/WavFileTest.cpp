// SPDX-License-Identifier: MIT
#include "core/sound/WavFile.h"

#include <gtest/gtest.h>

#include <string>

#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

using namespace std::string_literals;
using support::TemporaryFolder;
using support::WriteBytes;

const std::string kFormat = "fmt \x10\0\0\0\x01\0\x01\0\x80\xBB\0\0\0\x77\x01\0\x02\0\x10\0"s;
const std::string kData = "data\x04\0\0\0\x01\x02\x03\x04"s;

std::string Riff(const std::string& chunks) { return "RIFF\0\0\0\0WAVE"s + chunks; }

TEST(WavFile, HasItsFormatAndSamples) {
  const TemporaryFolder folder;
  const auto wav = WavFile::Read(WriteBytes(folder / "a.wav", Riff(kFormat + kData)));
  ASSERT_TRUE(wav.has_value());
  EXPECT_EQ(wav->samplesPerSecond, 48000U);
  EXPECT_EQ(wav->channels, 1);
  EXPECT_EQ(wav->samples, "\x01\x02\x03\x04");
}

TEST(WavFile, PassesOverOtherChunksAlsoOfOddLength) {
  const TemporaryFolder folder;
  const auto wav = WavFile::Read(WriteBytes(folder / "a.wav", Riff("LIST\x03\0\0\0abc\0"s + kFormat + kData)));
  ASSERT_TRUE(wav.has_value());
  EXPECT_EQ(wav->samples.size(), 4U);
}

TEST(WavFile, RefusesEverythingElse) {
  const TemporaryFolder folder;
  EXPECT_FALSE(WavFile::Read(folder / "missing.wav"));
  for (const std::string& bytes :
       {""s, "RIFF"s, "RIFX\0\0\0\0WAVE"s + kFormat + kData, Riff(""), Riff(kData), Riff(kFormat),
        // Cut off in the middle of the samples.
        Riff(kFormat + kData.substr(0, 10)),
        // Eight bits a sample.
        Riff("fmt \x10\0\0\0\x01\0\x01\0\x80\xBB\0\0\0\x77\x01\0\x02\0\x08\0"s + kData),
        // Floating point.
        Riff("fmt \x10\0\0\0\x03\0\x01\0\x80\xBB\0\0\0\x77\x01\0\x02\0\x10\0"s + kData)})
    EXPECT_FALSE(WavFile::Read(WriteBytes(folder / "a.wav", bytes))) << bytes.size();
}

}  // namespace
}  // namespace kestrin::core::sound
