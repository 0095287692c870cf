// SPDX-License-Identifier: MIT
#include "core/sound/import/SoundImport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <numbers>
#include <vector>

#include "core/base/PathText.h"
#include "core/sound/LSU_SoundFile.h"
#include "platform/audio/SystemAudioTools.h"
#include "support/RecordingDisk.h"
#include "support/SoundFiles.h"
#include "support/TestFiles.h"

namespace kestrin::platform::audio {
namespace {

namespace fs = std::filesystem;
using core::sound::ImportedSound;
using core::sound::ImportOptions;
using core::sound::ImportSource;
using core::sound::Loudness;
using support::Tone;
using support::WriteSound;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The samples of a ".lsu" file.
std::vector<std::int16_t> SamplesOf(const fs::path& path) {
  const std::string bytes = support::ReadBytes(path);
  std::vector<std::int16_t> samples((bytes.size() - 4) / 2);
  std::memcpy(samples.data(), bytes.data() + 4, 2 * samples.size());
  return samples;
}

class SoundImportTest : public ::testing::Test {
 protected:
  SoundImportTest() { fs::create_directory(m_out); }

  ImportedSound Import(const fs::path& file, const ImportOptions& options = {}) {
    return m_import.Import({file, file.filename().string(), core::base::TextOf(file.stem())}, options, m_out);
  }
  ImportedSound ImportNew(const std::string& kind, std::span<const double> frames, int rate = 48000, int channels = 1,
                          const ImportOptions& options = {}) {
    return Import(
        WriteSound(m_folder / ("sound" + fs::path("x." + kind).extension().string()), kind, frames, rate, channels),
        options);
  }
  /// By the meter, of what is in the file.
  Loudness Measured(const fs::path& path) {
    const auto meter = m_tools.MakeMeter();
    for (const std::int16_t sample : SamplesOf(path)) {
      const double value = sample / 32768.0;
      meter->Add({&value, 1});
    }
    return meter->Finish();
  }
  std::size_t FilesMade() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(m_out), fs::directory_iterator()));
  }

  support::TemporaryFolder m_folder;
  fs::path m_out = m_folder / "out";
  SystemAudioTools m_tools;
  support::RecordingDisk m_disk;
  core::sound::SoundImport m_import{m_tools, m_disk};
};

TEST_F(SoundImportTest, WhatTheBoardTakesAsItIsGetsCopiedBitByBit) {
  std::vector<double> frames;
  for (const std::int16_t sample : support::SomeSamples(30000, 16000)) frames.push_back(sample / 32768.0);
  const ImportedSound made = ImportNew("wav", frames);
  ASSERT_EQ(made.reason, "");
  EXPECT_EQ(made.path, m_out / "sound.lsu");
  EXPECT_THAT(made.changes, IsEmpty());
  EXPECT_EQ(SamplesOf(made.path), support::SomeSamples(30000, 16000));
  EXPECT_EQ(support::ReadBytes(made.path).substr(0, 4), std::string(4, '\0'));
  EXPECT_EQ(made.samples, 30000);
  EXPECT_EQ(made.seconds, 0.625);
  EXPECT_EQ(made.sourceSeconds, 0.625);
  EXPECT_EQ(made.rate, 48000);
  EXPECT_EQ(made.channels, 1);
  EXPECT_EQ(made.source, "sound.wav");
}

TEST_F(SoundImportTest, WhatIsDoneIsTold) {
  std::vector<double> stereo;
  for (const double sample : Tone(440, 0.5, 44100, 44100)) stereo.insert(stereo.end(), {sample, sample});
  EXPECT_THAT(ImportNew("wav", stereo, 44100, 2).changes, ElementsAre("stereo to mono", "44.1 to 48 kHz"));
  EXPECT_THAT(ImportNew("s24.flac", Tone(440, 0.5, 48000)).changes,
              ElementsAre("24 to 16 bit", "called \"sound 2\" because there is a \"sound\""));
}

TEST_F(SoundImportTest, EveryKindBecomesASoundForTheBoard) {
  const std::vector<double> frames = Tone(440, 0.5, 24000);
  for (const std::string& kind : support::SoundKinds()) {
    const ImportedSound made = ImportNew(kind, frames);
    ASSERT_EQ(made.reason, "") << kind;
    core::sound::LSU_SoundFile file;
    EXPECT_TRUE(file.ReadFile(made.path)) << kind;
    EXPECT_EQ(file.NrOfSamples(), made.samples) << kind;
    EXPECT_EQ(made.samples, kind == "adpcm.wav" ? file.NrOfSamples() : 24000) << kind;
    EXPECT_NEAR(made.loudness.value(), -6.02 - 0.7, 1) << kind;
  }
}

TEST_F(SoundImportTest, AFileThatIsNoSoundLeavesNothing) {
  const ImportedSound made = Import(support::WriteBytes(m_folder / "diary.txt", "Dear diary"));
  EXPECT_EQ(made.reason, "This is no sound that can be read here. Save it as WAV, FLAC, Ogg or MP3 and import that.");
  EXPECT_EQ(made.path, fs::path());
  EXPECT_EQ(FilesMade(), 0U);
}

}  // namespace
}  // namespace kestrin::platform::audio
