// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/audio/SystemAudioTools.h"
#include "support/SoundFiles.h"
#include "support/TestFiles.h"

namespace kestrin::platform::audio {
namespace {

using core::sound::SoundDecoder;
using support::SoundKinds;
using support::Tone;
using support::WriteSound;

class SndfileDecoderTest : public ::testing::Test {
 protected:
  static std::vector<double> ReadAll(SoundDecoder& decoder, std::size_t room = 1000) {
    std::vector<double> all;
    std::vector<double> block(room * static_cast<std::size_t>(decoder.Shape().channels));
    for (std::size_t read = decoder.Read(block); read > 0; read = decoder.Read(block)) {
      const auto samples = read * static_cast<std::size_t>(decoder.Shape().channels);
      all.insert(all.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(samples));
    }
    return all;
  }

  std::filesystem::path Write(const std::string& kind, std::span<const double> frames, int rate = 48000,
                              int channels = 1) {
    return WriteSound(m_folder / ("sound." + kind), kind, frames, rate, channels);
  }

  support::TemporaryFolder m_folder;
  SystemAudioTools m_tools;
};

/// What a kind is told as, and how far its samples may be from those that were written.
struct Row {
  const char* kind;
  const char* format;
  int bits;
  bool isLossy;
  double near;
};
constexpr Row kRows[] = {{"wav", "WAV", 16, false, 1.0 / 32768},
                         {"u8.wav", "WAV", 8, false, 1.0 / 128},
                         {"s24.wav", "WAV", 24, false, 1e-6},
                         {"s32.wav", "WAV", 32, false, 1e-9},
                         {"f32.wav", "WAV", 0, false, 1e-7},
                         {"f64.wav", "WAV", 0, false, 0},
                         {"adpcm.wav", "ADPCM", 0, true, 0.02},
                         {"aiff", "AIFF", 16, false, 1.0 / 32768},
                         {"flac", "FLAC", 16, false, 1.0 / 32768},
                         {"s24.flac", "FLAC", 24, false, 1e-6},
                         {"ogg", "Ogg Vorbis", 0, true, 0.1},
                         {"opus", "Opus", 0, true, 0.35},
                         {"mp3", "MP3", 0, true, 0.1},
                         {"caf", "CAF", 16, false, 1.0 / 32768},
                         {"alac.caf", "ALAC", 16, false, 1.0 / 32768},
                         {"au", "AU", 16, false, 1.0 / 32768},
                         {"w64", "W64", 16, false, 1.0 / 32768},
                         {"rf64", "WAV", 16, false, 1.0 / 32768}};

TEST_F(SndfileDecoderTest, EveryKindIsReadFromItsFirstFrameToItsLast) {
  ASSERT_EQ(std::size(kRows), SoundKinds().size());
  std::vector<double> left = Tone(440, 0.5, 24000);
  std::vector<double> frames;
  for (const double sample : left) frames.insert(frames.end(), {sample, -sample / 2});
  for (const Row& row : kRows) {
    auto opened = m_tools.Open(Write(row.kind, frames, 48000, 2));
    ASSERT_TRUE(opened) << row.kind << opened.Text();
    SoundDecoder& decoder = **opened;
    EXPECT_EQ(decoder.Shape().rate, 48000) << row.kind;
    EXPECT_EQ(decoder.Shape().channels, 2) << row.kind;
    EXPECT_EQ(decoder.Shape().bits, row.bits) << row.kind;
    EXPECT_EQ(decoder.Shape().format, row.format) << row.kind;
    EXPECT_EQ(decoder.Shape().isLossy, row.isLossy) << row.kind;
    const std::vector<double> all = ReadAll(decoder);
    // This one has whole blocks only.
    if (std::string_view(row.kind) == "adpcm.wav")
      ASSERT_GE(all.size(), frames.size());
    else
      ASSERT_EQ(all.size(), frames.size()) << row.kind;
    double furthest = 0;
    for (std::size_t i = 0; i < frames.size(); ++i) furthest = std::max(furthest, std::fabs(all[i] - frames[i]));
    EXPECT_LE(furthest, row.near) << row.kind;
    EXPECT_EQ(decoder.Ended().Text(), "") << row.kind;
    EXPECT_EQ(decoder.Mended(), 0U) << row.kind;
  }
}

TEST_F(SndfileDecoderTest, SoundsAboveFullScaleDoNotWrap) {
  for (const char* const kind : {"f32.wav", "ogg", "mp3"}) {
    const std::vector<double> loud = Tone(440, 1.4, 24000);
    auto opened = m_tools.Open(Write(kind, loud));
    ASSERT_TRUE(opened) << kind;
    const std::vector<double> all = ReadAll(**opened);
    ASSERT_EQ(all.size(), loud.size());
    // Where the sound is high nothing has the other sign.
    int wrong = 0;
    for (std::size_t i = 0; i < loud.size(); ++i) wrong += std::fabs(loud[i]) > 0.9 && all[i] * loud[i] <= 0 ? 1 : 0;
    EXPECT_EQ(wrong, 0) << kind;
  }
}

TEST_F(SndfileDecoderTest, WhatIsNoNumberBecomesSilenceAndIsCounted) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  std::vector<double> samples(1000, 0.25);
  samples[10] = std::nan("");
  samples[20] = kInfinity;
  samples[30] = -kInfinity;
  samples[40] = 1e30;
  samples[50] = -1e38;
  samples[60] = 5.5;
  for (const char* const kind : {"f32.wav", "f64.wav"}) {
    auto opened = m_tools.Open(Write(kind, samples));
    ASSERT_TRUE(opened);
    const std::vector<double> all = ReadAll(**opened);
    std::vector<double> expected = samples;
    for (const std::size_t place : {10U, 20U, 30U, 40U, 50U}) expected[place] = 0;
    EXPECT_EQ(all, expected);
    EXPECT_EQ((*opened)->Mended(), 5U);
    EXPECT_TRUE((*opened)->Ended());
  }
}

TEST_F(SndfileDecoderTest, AFileThatWasCutOffIsTold) {
  // 5 s of something that no format makes small.
  std::vector<double> noise(240000);
  std::uint32_t state = 1;
  for (double& sample : noise) {
    state = state * 1664525U + 1013904223U;
    sample = (static_cast<double>(state >> 8) - 8388608) / 8388608 * 0.5;
  }
  for (const std::string& kind : SoundKinds()) {
    const std::filesystem::path path = Write(kind, noise);
    const std::string whole = support::ReadBytes(path);
    for (const double part : {0.97, 0.5, 0.1}) {
      support::WriteBytes(path, whole.substr(0, static_cast<std::size_t>(static_cast<double>(whole.size()) * part)));
      auto opened = m_tools.Open(path);
      std::string text = opened.Text();
      if (opened) {
        const std::vector<double> all = ReadAll(**opened);
        EXPECT_LT(all.size(), noise.size()) << kind << " " << part;
        text = (*opened)->Ended().Text();
      }
      EXPECT_NE(text.find("The file breaks off "), text.npos) << kind << " " << part << " " << text;
      EXPECT_NE(text.find(". Copy it again from where it came."), text.npos) << kind << " " << part << " " << text;
    }
  }
}

TEST_F(SndfileDecoderTest, AnOggFileWithoutItsLastPageIsTold) {
  // What is left of it consists of whole pages.
  const std::filesystem::path path = Write("ogg", Tone(440, 0.5, 240000));
  const std::string whole = support::ReadBytes(path);
  auto opened = m_tools.Open(support::WriteBytes(path, whole.substr(0, whole.rfind("OggS"))));
  ASSERT_TRUE(opened) << opened.Text();
  static_cast<void>(ReadAll(**opened));
  EXPECT_EQ((*opened)->Ended().Text().substr(0, 20), "The file breaks off ");
}

TEST_F(SndfileDecoderTest, WhereAFileBreaksOffIsSaid) {
  const std::filesystem::path path = Write("wav", Tone(440, 0.5, 240000));
  const std::string whole = support::ReadBytes(path);
  const std::pair<std::size_t, std::string> rows[] = {
      {44 + 2 * 100, "The file breaks off inside its first second. Copy it again from where it came."},
      {44 + 2 * 47999, "The file breaks off inside its first second. Copy it again from where it came."},
      {44 + 2 * 50400, "The file breaks off after 1.0 s. Copy it again from where it came."},
      {44 + 2 * 180001, "The file breaks off after 3.7 s. Copy it again from where it came."}};
  for (const auto& [bytes, text] : rows) {
    auto opened = m_tools.Open(support::WriteBytes(path, whole.substr(0, bytes)));
    ASSERT_TRUE(opened) << bytes;
    static_cast<void>(ReadAll(**opened));
    EXPECT_EQ((*opened)->Ended().Text(), text);
  }
}

TEST_F(SndfileDecoderTest, AFileThatDoesNotKnowItsLengthIsWhole) {
  // As a program writes it whose output is a pipe.
  std::string bytes = support::ReadBytes(Write("wav", Tone(440, 0.5, 24000)));
  for (const char* const length : {"\xFF\xFF\xFF\xFF", "\xF0\xFF\xFF\x7F"}) {
    bytes.replace(4, 4, length, 4);
    bytes.replace(40, 4, length, 4);
    auto opened = m_tools.Open(support::WriteBytes(m_folder / "pipe.wav", bytes));
    ASSERT_TRUE(opened);
    EXPECT_EQ(ReadAll(**opened).size(), 24000U);
    EXPECT_EQ((*opened)->Ended().Text(), "");
  }
}

TEST_F(SndfileDecoderTest, ASecondSoundInTheSameFileIsNotLeftOutWithoutAWord) {
  const std::string bytes = support::ReadBytes(Write("ogg", Tone(440, 0.5, 24000))) +
                            support::ReadBytes(Write("opus", Tone(880, 0.5, 24000)));
  auto opened = m_tools.Open(support::WriteBytes(m_folder / "two.ogg", bytes));
  ASSERT_TRUE(opened) << opened.Text();
  static_cast<void>(ReadAll(**opened));
  EXPECT_EQ((*opened)->Ended().Text(),
            "The file holds several sounds one after another, of which only the first can be read. Save them as one "
            "WAV file and import that.");
}

TEST_F(SndfileDecoderTest, AFileThatIsWrittenToMeanwhileIsTold) {
  const std::filesystem::path path = Write("wav", Tone(440, 0.5, 24000));
  auto opened = m_tools.Open(path);
  ASSERT_TRUE(opened);
  std::filesystem::resize_file(path, 10000);
  static_cast<void>(ReadAll(**opened));
  EXPECT_EQ((*opened)->Ended().Text(), "The file changed while it was read. Import it again.");
}

TEST_F(SndfileDecoderTest, AFileOfAnotherKindIsToldWithWhatToSaveItAs) {
  const std::string as = " and cannot be read here. Save the sound as WAV, FLAC, Ogg or MP3 and import that.";
  const std::string damaged =
      " file is damaged, or packed in a way that cannot be read here. Copy it again from where it came, or save the "
      "sound as an ordinary WAV file and import that.";
  using namespace std::string_literals;
  const std::pair<std::string, std::string> rows[] = {
      {"\0\0\0\x18"s + "ftypM4A \0\0\0\0"s, "This is an M4A or MP4 file (AAC)" + as},
      {"\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9"s, "This is a WMA file" + as},
      {"MThd\0\0\0\6\0\1"s, "This is a MIDI file, which holds notes and no sound" + as},
      {"RIFF\x10\0\0\0AVI LIST"s, "This is a video" + as},
      {"Dear diary, today I wrote no sound at all."s,
       "This is no sound that can be read here. Save it as WAV, FLAC, Ogg or MP3 and import that."},
      {""s, "The file is empty. Copy it again from where it came."},
      {"RIFF\x24\0\0\0WAVEjunk\4\0\0\0abcdjunk\4\0\0\0abcd"s, "The WAV" + damaged},
      {"fLaC" + std::string(100, '\xFF'), "The FLAC" + damaged}};
  for (const auto& [bytes, text] : rows) {
    const auto opened = m_tools.Open(support::WriteBytes(m_folder / "sound", bytes));
    ASSERT_FALSE(opened) << text;
    EXPECT_EQ(opened.Text(), text);
  }
}

TEST_F(SndfileDecoderTest, WhatCannotBeOpenedIsToldWithTheNextStep) {
  EXPECT_EQ(m_tools.Open(m_folder / "nowhere.wav").Text(), "The file is not there. Check its name and its folder.");
  EXPECT_EQ(m_tools.Open(m_folder.Path()).Text(), "This is a folder or a device and no file. Choose a sound file.");
}

TEST_F(SndfileDecoderTest, FarTooMuchFromLittleIsNotRead) {
  // An hour of silence; FLAC makes some kilobytes of it.
  const std::vector<double> silence(3600 * 1000, 0.0);
  const std::filesystem::path path = Write("flac", silence, 1000);
  const auto bytes = std::filesystem::file_size(path);
  const std::uint64_t most = 600 * 1000 + 100 * bytes;
  ASSERT_LT(most, silence.size()) << bytes;
  auto opened = m_tools.Open(path);
  ASSERT_TRUE(opened);
  EXPECT_LE(ReadAll(**opened, 4096).size(), most);
  EXPECT_EQ((*opened)->Ended().Text(), "The sound is longer than can be imported. Cut it shorter and import that.");
}

}  // namespace
}  // namespace kestrin::platform::audio
