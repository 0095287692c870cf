// SPDX-License-Identifier: MIT
#include "core/sound/import/SoundImport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
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

TEST_F(SoundImportTest, ATonesQualityIsThatOfSixteenBits) {
  // 44,100 Hz stereo of 24 bits: whatever is not the tone is what 16 bits with dither have, -96.3 dB + 3 x 1.76 dB of
  // noise below full scale: 93 dB.
  for (const double hertz : {100.0, 997.0, 10000.0, 18000.0}) {
    std::vector<double> stereo;
    for (std::size_t i = 0; i < 88200; ++i) {
      const double sample = 0.8 * std::sin(2 * std::numbers::pi * hertz * static_cast<double>(i) / 44100);
      stereo.insert(stereo.end(), {sample, sample});
    }
    const ImportedSound made = ImportNew("s24.wav", stereo, 44100, 2);
    ASSERT_EQ(made.reason, "");
    const std::vector<std::int16_t> samples = SamplesOf(made.path);
    ASSERT_EQ(samples.size(), 96000U);
    std::array<double, 5> sums{};
    const auto wave = [hertz](std::size_t i) {
      const double angle = 2 * std::numbers::pi * hertz * static_cast<double>(i) / 48000;
      return std::pair(std::sin(angle), std::cos(angle));
    };
    for (std::size_t i = 9600; i < 86400; ++i) {
      const auto [sine, cosine] = wave(i);
      sums[0] += sine * sine;
      sums[1] += sine * cosine;
      sums[2] += cosine * cosine;
      sums[3] += samples[i] * sine;
      sums[4] += samples[i] * cosine;
    }
    const double determinant = sums[0] * sums[2] - sums[1] * sums[1];
    const double a = (sums[3] * sums[2] - sums[4] * sums[1]) / determinant;
    const double b = (sums[4] * sums[0] - sums[3] * sums[1]) / determinant;
    double noise = 0;
    for (std::size_t i = 9600; i < 86400; ++i) {
      const auto [sine, cosine] = wave(i);
      noise += std::pow(samples[i] - a * sine - b * cosine, 2);
    }
    EXPECT_NEAR(std::hypot(a, b) / 32768, 0.8, 0.001) << hertz;
    // Triangular dither and rounding together have a power of a quarter of a step squared.
    EXPECT_NEAR(noise / 76800, 0.25, 0.02) << hertz;
  }
}

/// Sounds of all heights and sorts.
std::vector<std::vector<double>> SomeSounds() {
  std::vector<std::vector<double>> sounds;
  std::uint32_t state = 1;
  const auto noise = [&state] {
    state = state * 1664525U + 1013904223U;
    return (static_cast<double>(state >> 8) - 8388608) / 8388608;
  };
  for (const double height : {3.0, 1.0, 0.5, 0.01}) {
    std::vector<double> square(30000);
    std::vector<double> hiss(30000);
    std::vector<double> clash(9000);
    for (std::size_t i = 0; i < square.size(); ++i) square[i] = i % 48 < 24 ? height : -height;
    for (double& sample : hiss) sample = height * noise();
    for (std::size_t i = 0; i < clash.size(); ++i)
      clash[i] = height * noise() * std::exp(-static_cast<double>(i) / 2000);
    sounds.insert(sounds.end(), {square, hiss, clash, Tone(11000, height, 30000, 48000, 0.8)});
  }
  return sounds;
}

TEST_F(SoundImportTest, NoTruePeakIsAboveMinusOneDecibelAndWhatIsSaidIsTrue) {
  for (const std::vector<double>& sound : SomeSounds())
    for (const int rate : {44100, 48000})
      for (const std::optional<double> level : {std::optional<double>(), std::optional<double>(-10)}) {
        const ImportedSound made = ImportNew("f32.wav", sound, rate, 1, {.level = level});
        ASSERT_EQ(made.reason, "");
        const Loudness measured = Measured(made.path);
        EXPECT_LE(measured.truePeak.value(), -1);
        EXPECT_NEAR(made.truePeak.value(), measured.truePeak.value(), 0.02);
        EXPECT_NEAR(made.loudness.value(), measured.lufs.value(), 0.02);
      }
}

TEST_F(SoundImportTest, TheLoudnessIsReachedAsFarAsThePeaksAllow) {
  const ImportedSound made = ImportNew("wav", Tone(997, 0.05, 96000), 48000, 1, {.level = -20.0});
  EXPECT_NEAR(made.loudness.value(), -20, 0.1);
  EXPECT_THAT(made.changes, ElementsAre("6 dB louder"));
  // 12 dB are the most, and below -60 LUFS nothing is done.
  EXPECT_NEAR(ImportNew("wav", Tone(997, 0.01, 96000), 48000, 1, {.level = -16.0}).loudness.value(), -40.2 + 12, 0.2);
  EXPECT_NEAR(ImportNew("wav", Tone(997, 0.0005, 96000), 48000, 1, {.level = -16.0}).loudness.value(), -66.2, 0.3);
}

TEST_F(SoundImportTest, SilenceAtBothEndsGoesAndTheCutsDoNotClick) {
  // A little noise, 70 dB down, where a recording has silence.
  std::vector<double> sound(48000, 0.0);
  for (std::size_t i = 0; i < sound.size(); ++i) sound[i] = i % 2 == 0 ? 0.00015 : -0.00015;
  const std::vector<double> noise = sound;
  const std::vector<double> tone = Tone(440, 0.5, 24000);
  sound.insert(sound.end(), tone.begin(), tone.end());
  sound.insert(sound.end(), noise.begin(), noise.end());
  const ImportedSound made = ImportNew("f32.wav", sound, 48000, 1, {.trim = true});
  // 240 samples stay before, 960 behind.
  EXPECT_NEAR(static_cast<double>(made.samples), 24000 + 240 + 960, 20);
  EXPECT_THAT(made.changes, ElementsAre("float to 16 bit", "2 s silence off"));
  EXPECT_EQ(made.sourceSeconds, 2.5);
  const std::vector<std::int16_t> samples = SamplesOf(made.path);
  EXPECT_LE(std::abs(samples.front()), 1);
  EXPECT_LE(std::abs(samples.back()), 1);
}

TEST_F(SoundImportTest, AHumRepeatsWithoutAClick) {
  std::vector<double> hum(70000);
  for (std::size_t i = 0; i < hum.size(); ++i)
    hum[i] = 0.5 * std::sin(2 * std::numbers::pi * 97.3 * static_cast<double>(i) / 44100 + 1);
  const ImportedSound made = ImportNew("s24.wav", hum, 44100, 1, {.loop = true});
  EXPECT_THAT(made.changes, ElementsAre("44.1 to 48 kHz", "24 to 16 bit", "ends joined to a loop"));
  const std::vector<std::int16_t> samples = SamplesOf(made.path);
  int largest = std::abs(samples.front() - samples.back());
  for (std::size_t i = 1; i < samples.size(); ++i) largest = std::max(largest, std::abs(samples[i] - samples[i - 1]));
  // The steepest step of such a tone is 208.7; dither adds up to 3.
  EXPECT_LE(largest, 1.1 * 209 + 3);
  EXPECT_THAT(ImportNew("wav", Tone(997, 0.5, 900), 48000, 1, {.loop = true}).changes,
              ::testing::Contains("too short to join its ends"));
}

TEST_F(SoundImportTest, StereoThatCancelsOutIsNotLost) {
  std::vector<double> stereo;
  for (const double sample : Tone(440, 0.5, 24000)) stereo.insert(stereo.end(), {sample, -sample});
  const ImportedSound made = ImportNew("wav", stereo, 48000, 2);
  EXPECT_EQ(made.reason, "");
  EXPECT_THAT(made.changes, ElementsAre("stereo to its channel 1, since together they cancel out"));
  EXPECT_NEAR(made.truePeak.value(), -6.02, 0.05);
}

TEST_F(SoundImportTest, LoudStereoIsNotClipped) {
  std::vector<double> stereo;
  for (const double sample : Tone(440, 0.99, 24000)) stereo.insert(stereo.end(), {sample, sample});
  const ImportedSound made = ImportNew("wav", stereo, 48000, 2);
  EXPECT_THAT(made.changes, ElementsAre("stereo to mono", "0.9 dB quieter"));
  EXPECT_NEAR(made.truePeak.value(), -1.01, 0.01);
}

TEST_F(SoundImportTest, ALongSoundComesOutAsAShortOneDoes) {
  // 25 s are decoded twice and more; the same tone of 20 s is kept in memory.
  std::vector<double> tone(25 * 44100);
  for (std::size_t i = 0; i < tone.size(); ++i)
    tone[i] = 0.98 * std::sin(2 * std::numbers::pi * 441 * static_cast<double>(i) / 44100);
  const ImportedSound made = ImportNew("wav", tone, 44100);
  const ImportedSound shorter = ImportNew("wav", std::span(tone).first(20 * 44100), 44100);
  ASSERT_EQ(made.reason + shorter.reason, "");
  EXPECT_EQ(made.samples, 25 * 48000);
  const std::vector<std::int16_t> samples = SamplesOf(made.path);
  const std::vector<std::int16_t> expected = SamplesOf(shorter.path);
  int furthest = 0;
  for (std::size_t i = 0; i < 19 * 48000; ++i) furthest = std::max(furthest, std::abs(samples[i] - expected[i]));
  // The gain differs a little, and so does what is rounded up.
  EXPECT_LE(furthest, 3);
  EXPECT_LE(Measured(made.path).truePeak.value(), -1);
}

TEST_F(SoundImportTest, ALongSoundIsTrimmedAndJoinedAsAShortOne) {
  std::vector<double> sound(30 * 48000, 0.0);
  for (std::size_t i = 48000; i < 28 * 48000; ++i)
    sound[i] = 0.5 * std::sin(2 * std::numbers::pi * 100 * static_cast<double>(i) / 48000);
  const ImportedSound made = ImportNew("wav", sound, 48000, 1, {.trim = true, .loop = true});
  ASSERT_EQ(made.reason, "");
  EXPECT_THAT(made.changes, ElementsAre("ends joined to a loop", "3 s silence off"));
  // Off go 28 of 30 seconds' silence but 1,200 samples, then 4,800 to 6,000 for the join.
  EXPECT_LE(made.samples, 27 * 48000 + 1200 - 4800);
  EXPECT_GE(made.samples, 27 * 48000 - 6000);
  EXPECT_THAT(ImportNew("wav", sound, 48000, 1, {.trim = true}).changes, ::testing::Contains("3 s silence off"));
}

TEST_F(SoundImportTest, ASoundForTheBoardIsCopiedAsItStands) {
  const fs::path file = support::WriteSoundFile(m_folder / "hum.LSU", support::SomeSamples(5000, 32767));
  const ImportedSound made = Import(file, {.trim = true, .level = -16.0});
  ASSERT_EQ(made.reason, "");
  EXPECT_EQ(support::ReadBytes(made.path), support::ReadBytes(file));
  EXPECT_THAT(made.changes, IsEmpty());
  EXPECT_EQ(made.samples, 5000);
  EXPECT_NEAR(made.loudness.value(), Measured(file).lufs.value(), 1e-6);
  EXPECT_EQ(Import(support::WriteSoundFile(m_folder / "short.lsu", support::SomeSamples(48))).reason,
            "The file is too short: a sound has at least 49 samples, a thousandth of a second. Choose a longer one.");
}

TEST_F(SoundImportTest, WhatTheBoardCouldNotUseIsRefused) {
  const std::string silent = "The sound is silent from its beginning to its end. Choose a sound that can be heard.";
  const std::string tooShort =
      "The sound is too short: a sound has at least 49 samples, a thousandth of a second. Choose a longer one.";
  EXPECT_EQ(ImportNew("wav", std::vector<double>(48000, 0.0)).reason, silent);
  EXPECT_EQ(ImportNew("f64.wav", std::vector<double>(48000, 1e-12)).reason, silent);
  EXPECT_EQ(ImportNew("wav", Tone(997, 0.5, 48)).reason, tooShort);
  EXPECT_EQ(ImportNew("wav", Tone(997, 0.5, 49)).reason, "");
  EXPECT_EQ(ImportNew("wav", {}).reason, tooShort);
  EXPECT_EQ(FilesMade(), 1U);
}

TEST_F(SoundImportTest, NamesThatChangeAreTold) {
  const fs::path file = WriteSound(m_folder / "x.wav", "wav", Tone(440, 0.5, 1000));
  const auto import = [&](const std::string& name) { return m_import.Import({file, "x", name}, {}, m_out); };
  EXPECT_THAT(import("con").changes, ElementsAre("called \"_con\" because Windows keeps its name for a device"));
  EXPECT_THAT(import("a?").changes,
              ElementsAre("called \"a_\" because Windows takes no name with any of < > : \" / \\ | ? *"));
  const ImportedSound both = import("a*");
  EXPECT_THAT(
      both.changes,
      ElementsAre("called \"a_ 2\" because Windows takes no name with any of < > : \" / \\ | ? *, and there is a "
                  "\"a_\""));
  EXPECT_EQ(both.path, m_out / "a_ 2.lsu");
}

TEST_F(SoundImportTest, WhoIsQuickerWithANameKeepsIt) {
  // Another program takes the name between the look into the folder and the moment in which it is given.
  int left = 2;
  m_disk.onTakeFreeName = [&](const fs::path& name) {
    if (left-- > 0) support::WriteBytes(name, "quicker");
    return std::error_code();
  };
  const ImportedSound made = ImportNew("wav", Tone(440, 0.5, 1000));
  EXPECT_EQ(made.path, m_out / "sound 3.lsu");
  EXPECT_EQ(support::ReadBytes(m_out / "sound.lsu"), "quicker");
  EXPECT_EQ(support::ReadBytes(m_out / "sound 2.lsu"), "quicker");
  EXPECT_EQ(FilesMade(), 3U);
}

TEST_F(SoundImportTest, AReasonThatIsKnownBeforeIsPassedOn) {
  const ImportedSound made = m_import.Import({{}, "a.zip: b.wav", "b", "It is encrypted."}, {}, m_out);
  EXPECT_EQ(made.reason, "It is encrypted.");
  EXPECT_EQ(made.source, "a.zip: b.wav");
  EXPECT_EQ(FilesMade(), 0U);
}

TEST_F(SoundImportTest, StoppedAtAnyMomentItLeavesNothing) {
  const fs::path kept = WriteSound(m_folder / "kept.wav", "wav", Tone(440, 0.5, 100000), 44100);
  const fs::path board = support::WriteSoundFile(m_folder / "board.lsu", support::SomeSamples(100000));
  for (const fs::path& file : {kept, board}) {
    int asked = 0;
    ASSERT_EQ(m_import.Import({file, "x", "x"}, {}, m_out, [&] { return ++asked > 0; }).reason, "");
    fs::remove(m_out / "x.lsu");
    ASSERT_GT(asked, 5);
    for (int moment = 0; moment < asked; ++moment) {
      int left = moment;
      const ImportedSound made = m_import.Import({file, "x", "x"}, {}, m_out, [&] { return left-- > 0; });
      EXPECT_EQ(made.reason, "Stopped.") << moment;
      EXPECT_EQ(made.path, fs::path());
      left = moment;
      EXPECT_THROW(static_cast<void>(m_import.Import({file, "x", "x"}, {}, m_out,
                                                     [&]() -> bool { return left-- > 0 ? true : throw 7; })),
                   int);
      ASSERT_EQ(FilesMade(), 0U) << moment;
    }
  }
}

TEST_F(SoundImportTest, OnAFullDiskNothingIsLeft) {
  m_disk.onFlush = [](const fs::path&) { return std::make_error_code(std::errc::no_space_on_device); };
  const ImportedSound made = ImportNew("wav", Tone(440, 0.5, 1000));
  EXPECT_EQ(made.reason, "It could not be written into \"" + m_out.string() +
                             "\": No space left on device. Make room on the disk or choose another folder, and import "
                             "it again.");
  EXPECT_EQ(FilesMade(), 0U);
  m_disk.onFlush = nullptr;
  m_disk.onTakeFreeName = [](const fs::path&) { return std::make_error_code(std::errc::permission_denied); };
  EXPECT_EQ(
      ImportNew("wav", Tone(440, 0.5, 1000)).reason,
      "\"" + (m_out / "sound.lsu").string() +
          "\" could not be written: Permission denied. Make room on the disk or choose another folder, and import "
          "it again.");
  EXPECT_EQ(FilesMade(), 0U);
}

TEST_F(SoundImportTest, AFileThatIsNoSoundLeavesNothing) {
  const ImportedSound made = Import(support::WriteBytes(m_folder / "diary.txt", "Dear diary"));
  EXPECT_EQ(made.reason, "This is no sound that can be read here. Save it as WAV, FLAC, Ogg or MP3 and import that.");
  EXPECT_EQ(made.path, fs::path());
  EXPECT_EQ(FilesMade(), 0U);
}

}  // namespace
}  // namespace kestrin::platform::audio
