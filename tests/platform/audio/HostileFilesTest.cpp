// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <atomic>
#include <bit>
#include <cmath>
#include <fstream>
#include <limits>
#include <thread>
#include <vector>

#include "core/sound/LSU_SoundFile.h"
#include "core/sound/import/ImportCrew.h"
#include "platform/audio/SystemAudioTools.h"
#include "support/RecordingDisk.h"
#include "support/SoundFiles.h"
#include "support/TestFiles.h"

#ifdef __SANITIZE_ADDRESS__
// libsndfile forgets a few kilobytes of every broken Ogg file.
extern "C" const char* __lsan_default_suppressions() { return "leak:libvorbis\n"; }
#endif

namespace kestrin::platform::audio {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using core::sound::ImportedSound;
using support::Tone;
using support::WriteBytes;
using support::WriteSound;

/// A number as it stands in a file.
std::string Number(std::uint64_t number, std::size_t bytes, bool isBigEndian = false) {
  std::string text;
  for (std::size_t i = 0; i < bytes; ++i) text += static_cast<char>(number >> 8 * i & 0xFF);
  return isBigEndian ? std::string(text.rbegin(), text.rend()) : text;
}

/// The head of a WAV file and what else it says of itself.
struct Wav {
  std::uint32_t format = 1;
  std::uint32_t channels = 1;
  std::uint32_t rate = 48000;
  std::uint32_t bits = 16;
  std::optional<std::uint32_t> riffBytes = {};
  std::optional<std::uint32_t> dataBytes = {};
  std::optional<std::uint32_t> frameBytes = {};
  /// Chunks in front of the samples.
  std::string before = {};
};

std::string WavBytes(const Wav& wav, const std::string& data) {
  const std::uint32_t frame = wav.frameBytes.value_or(wav.channels * wav.bits / 8 & 0xFFFF);
  const std::string content = "WAVEfmt " + Number(16, 4) + Number(wav.format, 2) + Number(wav.channels, 2) +
                              Number(wav.rate, 4) + Number(std::uint64_t{wav.rate} * frame, 4) + Number(frame, 2) +
                              Number(wav.bits, 2) + wav.before + "data" +
                              Number(wav.dataBytes.value_or(static_cast<std::uint32_t>(data.size())), 4) + data;
  return "RIFF" + Number(wav.riffBytes.value_or(static_cast<std::uint32_t>(content.size())), 4) + content;
}

std::string AuBytes(std::uint32_t rate, std::uint32_t channels, const std::string& data) {
  return ".snd" + Number(24, 4, true) + Number(data.size(), 4, true) + Number(3, 4, true) + Number(rate, 4, true) +
         Number(channels, 4, true) + data;
}

std::string CafBytes(double rate, std::uint32_t channels, const std::string& data) {
  return "caff\0\1\0\0desc"s + Number(32, 8, true) + Number(std::bit_cast<std::uint64_t>(rate), 8, true) + "lpcm" +
         Number(0, 4) + Number(2 * channels, 4, true) + Number(1, 4, true) + Number(channels, 4, true) +
         Number(16, 4, true) + "data" + Number(data.size() + 4, 8, true) + Number(0, 4) + data;
}

class HostileFilesTest : public ::testing::Test {
 protected:
  HostileFilesTest() { fs::create_directory(m_out); }

  ImportedSound Import(const fs::path& path, const core::sound::ImportOptions& options = {}) {
    return m_import.Import({path, path.string(), "sound"}, options, m_out);
  }
  /// Whatever the file is: either there is a whole sound, or a reason and nothing else.
  ImportedSound ImportAny(const std::string& name, const std::string& bytes) {
    const ImportedSound made =
        Import(WriteBytes(m_folder / "hostile", bytes), {.trim = true, .loop = true, .level = -16.0});
    EXPECT_EQ(made.reason.empty(), !made.path.empty()) << name;
    if (made.path.empty()) {
      EXPECT_EQ(made.reason.back(), '.') << name;
      EXPECT_EQ(Left(), 0) << name << " " << made.reason;
    } else {
      core::sound::LSU_SoundFile file;
      EXPECT_TRUE(file.ReadFile(made.path)) << name;
      EXPECT_LE(made.truePeak.value(), -1) << name;
      EXPECT_EQ(Left(), 1) << name;
      fs::remove(made.path);
    }
    ++m_files;
    return made;
  }
  std::ptrdiff_t Left() const { return std::distance(fs::directory_iterator(m_out), fs::directory_iterator()); }
  std::string KindBytes(const std::string& kind) {
    return support::ReadBytes(WriteSound(m_folder / "source", kind, Tone(440, 0.5, 24000)));
  }

  support::TemporaryFolder m_folder;
  fs::path m_out = m_folder / "out";
  SystemAudioTools m_tools;
  support::RecordingDisk m_disk;
  core::sound::SoundImport m_import{m_tools, m_disk};
  std::string m_noise = [] {
    std::string bytes;
    for (const std::int16_t sample : support::SomeSamples(1000)) bytes += Number(static_cast<std::uint16_t>(sample), 2);
    return bytes;
  }();
  int m_files = 0;
};

TEST_F(HostileFilesTest, NumbersThatNobodyCouldMeanAreToldOrDoNoHarm) {
  const std::string channels = " channels; up to 32 can be read. Save it with one or two and import that.";
  const std::string rate = " samples a second; 1,000 to 768,000 can be read. Save it with 48,000 and import that.";
  for (const std::uint32_t count : {33U, 1023U, 1024U})
    EXPECT_EQ(ImportAny("channels", WavBytes({.channels = count, .bits = 8}, std::string(20000, 'x'))).reason,
              "The file says that it has " + std::to_string(count) + channels);
  for (const std::uint32_t count : {0U, 1025U, 65535U})
    EXPECT_NE(ImportAny("channels", WavBytes({.channels = count}, m_noise)).reason, "") << count;
  for (const std::uint32_t count : {0U, 1025U, 1'000'000'000U, 0x80000000U, 0xFFFFFFFFU}) {
    EXPECT_NE(ImportAny("AU channels", AuBytes(48000, count, m_noise)).reason, "") << count;
    EXPECT_NE(ImportAny("CAF channels", CafBytes(48000, count, m_noise)).reason, "") << count;
  }
  for (const std::uint32_t hertz : {1U, 999U, 768001U, 0x7FFFFFFFU})
    EXPECT_EQ(ImportAny("rate", WavBytes({.rate = hertz}, m_noise)).reason,
              "The file says that it has " + std::to_string(hertz) + rate);
  for (const std::uint32_t hertz : {0U, 0x80000000U, 0xFFFFFFFFU})
    EXPECT_NE(ImportAny("rate", WavBytes({.rate = hertz}, m_noise)).reason, "") << hertz;
  for (const double hertz : {0.0, -1.0, 1e300, std::nan(""), std::numeric_limits<double>::infinity()})
    EXPECT_NE(ImportAny("CAF rate", CafBytes(hertz, 1, m_noise)).reason, "") << hertz;
  for (const std::uint32_t hertz : {1000U, 768000U})
    EXPECT_EQ(ImportAny("rate", WavBytes({.rate = hertz}, m_noise + m_noise + m_noise + m_noise)).reason, "") << hertz;
  for (const std::uint32_t bits : {0U, 1U, 7U, 12U, 17U, 64U, 255U, 65535U})
    static_cast<void>(ImportAny("bits", WavBytes({.bits = bits}, m_noise)));
  for (const std::uint32_t size : {0U, 1U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
    static_cast<void>(ImportAny("data size", WavBytes({.dataBytes = size}, m_noise)));
    static_cast<void>(ImportAny("riff size", WavBytes({.riffBytes = size}, m_noise)));
    static_cast<void>(ImportAny("both sizes", WavBytes({.riffBytes = size, .dataBytes = size}, m_noise)));
  }
  for (const std::uint32_t frame : {0U, 1U, 3U, 65535U})
    static_cast<void>(ImportAny("frame size", WavBytes({.frameBytes = frame}, m_noise)));
  for (const std::uint32_t format : {0U, 2U, 0x11U, 0x31U, 0x55U, 0xFFFEU, 0xFFFFU})
    static_cast<void>(ImportAny("format", WavBytes({.format = format}, m_noise)));
  EXPECT_GE(m_files, 60);
}

TEST_F(HostileFilesTest, SamplesThatAreNoNumbersBecomeSilenceAndAreTold) {
  std::string floats;
  for (int i = 0; i < 1000; ++i) floats += Number(std::bit_cast<std::uint32_t>(i % 2 == 0 ? 0.1F : -0.1F), 4);
  for (const float bad :
       {std::nanf(""), std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(), 1e30F, -1e38F})
    floats += Number(std::bit_cast<std::uint32_t>(bad), 4);
  const ImportedSound made =
      Import(WriteBytes(m_folder / "bad.wav", WavBytes({.format = 3, .bits = 32}, floats + floats)));
  EXPECT_EQ(made.reason, "");
  EXPECT_EQ(made.changes.back(), "10 damaged samples silenced");
  EXPECT_NEAR(made.truePeak.value(), -20, 3);
  fs::remove(made.path);

  std::string nothing;
  for (int i = 0; i < 1000; ++i) nothing += Number(std::bit_cast<std::uint32_t>(std::nanf("")), 4);
  EXPECT_EQ(ImportAny("all NaN", WavBytes({.format = 3, .bits = 32}, nothing)).reason,
            "The sound is silent from its beginning to its end. Choose a sound that can be heard.");
}

TEST_F(HostileFilesTest, ChunksThatLieDoNoHarm) {
  std::string many;
  for (int i = 0; i < 200'000; ++i) many += "abcd\0\0\0\0"s;
  static_cast<void>(ImportAny("many chunks", WavBytes({.before = many}, m_noise)));
  static_cast<void>(ImportAny("huge junk", WavBytes({.before = "JUNK" + Number(0x7FFFFFF0, 4)}, m_noise)));
  static_cast<void>(
      ImportAny("huge list", WavBytes({}, m_noise) + "LIST\xFF\xFF\xFF\x7FINFOIART\xFF\xFF\xFF\x7F" + "a"));
  static_cast<void>(
      ImportAny("huge cue", WavBytes({.before = "cue " + Number(0x7FFFFF00, 4) + Number(0x7FFFFFFF, 4)}, m_noise)));
  static_cast<void>(ImportAny("8SVX", "FORM\0\0\1\0"s + "8SVXVHDR" + Number(20, 4, true) + std::string(20, '\xFF') +
                                          "BODY" + Number(0x7FFFFFFF, 4, true) + std::string(100, 'x')));
  static_cast<void>(ImportAny("ID3 of 256 MB", "ID3\4\0\0\x7F\x7F\x7F\x7F"s + KindBytes("mp3")));
  static_cast<void>(ImportAny("picture of 2 GB", "ID3\4\0\0\0\x7F\x7F\x7F"s + "APIC\x7F\x7F\x7F\x7F\0\0"s +
                                                     std::string(3000, 'A') + KindBytes("mp3")));
}

TEST_F(HostileFilesTest, LengthsThatLieAreNotBelieved) {
  std::string flac = KindBytes("flac");
  flac[21] = static_cast<char>(flac[21] | 15);
  flac.replace(22, 4, "\xFF\xFF\xFF\xFF");
  EXPECT_NE(ImportAny("2^36 frames", flac).reason, "");
  std::string noRate = KindBytes("flac");
  noRate.replace(18, 3, "\0\0\x0F"s);
  EXPECT_NE(ImportAny("FLAC without a rate", noRate).reason, "");
  std::string mp3 = KindBytes("mp3");
  const std::size_t tag = mp3.find("Xing") == mp3.npos ? mp3.find("Info") : mp3.find("Xing");
  ASSERT_NE(tag, mp3.npos);
  mp3.replace(tag + 8, 4, "\x7F\xFF\xFF\xFF");
  static_cast<void>(ImportAny("MP3 of days", mp3));
  std::string rf64 = KindBytes("rf64");
  rf64.replace(
      20, 24,
      Number(std::uint64_t{1} << 62, 8) + Number(std::uint64_t{1} << 62, 8) + Number(std::uint64_t{1} << 62, 8));
  static_cast<void>(ImportAny("RF64 of 2^62 bytes", rf64));
  static_cast<void>(ImportAny("W64 of 2^64 bytes", [&] {
    std::string w64 = KindBytes("w64");
    const std::size_t data = w64.find("data");
    return w64.replace(data + 16, 8, std::string(8, '\xFF'));
  }()));
}

TEST_F(HostileFilesTest, CutOffAnywhereEachKindIsTold) {
  for (const std::string& kind : support::SoundKinds()) {
    const std::string whole = KindBytes(kind);
    for (const std::size_t bytes : {0U, 1U, 4U, 12U, 30U, 44U, 60U, 100U, 300U, 1000U}) {
      if (bytes < whole.size()) {
        EXPECT_NE(ImportAny(kind + " of " + std::to_string(bytes), whole.substr(0, bytes)).reason, "");
      }
    }
    // A block that is not whole may hold nothing but the end of a name or of silence.
    static_cast<void>(ImportAny(kind, whole.substr(0, whole.size() - 1)));
  }
}

TEST_F(HostileFilesTest, BytesThatAreWrongHereAndThereDoNoHarm) {
  std::uint32_t state = 7;
  const auto chance = [&state](std::size_t below) {
    state = state * 1664525U + 1013904223U;
    return static_cast<std::size_t>(state >> 8) % below;
  };
  for (const std::string& kind : support::SoundKinds()) {
    const std::string whole = KindBytes(kind);
    for (int round = 0; round < 12; ++round) {
      std::string bytes = whole;
      for (std::size_t change = 0; change <= chance(8); ++change)
        bytes[chance(std::min<std::size_t>(bytes.size(), round % 2 == 0 ? 100 : 20000))] =
            static_cast<char>(chance(3) == 0 ? 0xFF : chance(256));
      static_cast<void>(ImportAny(kind + " " + std::to_string(round), bytes));
    }
  }
}

TEST_F(HostileFilesTest, AFileThatChangesBetweenTwoReadingsIsTold) {
  // Long enough to be decoded twice. The disk's own clock is no help: the file is swapped for another.
  const fs::path path = m_folder / "long.wav";
  const std::vector<double> sound = Tone(440, 0.5, 1'200'000);
  std::vector<double> louder = sound;
  louder[1'100'000] += 0.1;
  const std::vector<double> shorter(sound.begin(), sound.end() - 5000);
  WriteSound(m_folder / "same.wav", "wav", sound);
  WriteSound(m_folder / "louder.wav", "wav", louder);
  WriteSound(m_folder / "shorter.wav", "wav", shorter);
  for (const char* const other : {"same.wav", "louder.wav", "shorter.wav"}) {
    WriteSound(path, "wav", sound);
    // The sound is gone through block by block of 4,096; the first reading ends behind the 293rd.
    int asked = 0;
    const ImportedSound made = m_import.Import({path, "long", "long"}, {}, m_out, [&] {
      if (++asked == 100) {
        fs::remove(path);
        fs::copy_file(m_folder / other, path);
      }
      return true;
    });
    ASSERT_GT(asked, 500);
    EXPECT_EQ(made.reason, other == "same.wav"s ? "" : "The file changed while it was read. Import it again.") << other;
    EXPECT_EQ(Left(), other == "same.wav"s ? 1 : 0);
    if (!made.path.empty()) fs::remove(made.path);
  }
}

#ifndef _WIN32
TEST_F(HostileFilesTest, WhatIsNoFileIsNeitherReadNorWaitedFor) {
  ASSERT_EQ(mkfifo((m_folder / "pipe.wav").c_str(), 0600), 0);
  fs::create_symlink("/dev/zero", m_folder / "zero.wav");
  fs::create_symlink(m_folder / "pipe.wav", m_folder / "link.wav");
  fs::create_directory(m_folder / "folder.wav");
  for (const char* const name : {"pipe.wav", "zero.wav", "link.wav", "folder.wav"})
    EXPECT_EQ(Import(m_folder / name).reason, "This is a folder or a device and no file. Choose a sound file.") << name;
  // As text of a board's sound the same.
  ASSERT_EQ(mkfifo((m_folder / "pipe.lsu").c_str(), 0600), 0);
  EXPECT_EQ(Import(m_folder / "pipe.lsu").reason, "The file is a folder or a device and no file. Choose a sound file.");
  fs::create_symlink(m_folder / "nowhere", m_folder / "dangling.wav");
  EXPECT_EQ(Import(m_folder / "dangling.wav").reason, "The file is not there. Check its name and its folder.");
  EXPECT_EQ(Left(), 0);
}

TEST_F(HostileFilesTest, AnEndlessSoundOutOfAPipeIsNotReadAtAll) {
  const fs::path pipe = m_folder / "endless.ogg";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const std::string page = KindBytes("ogg");
  // Somebody writes for as long as somebody reads.
  const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  const int writer = open(pipe.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
  ASSERT_GE(std::min(reader, writer), 0);
  ASSERT_GT(write(writer, page.data(), page.size()), 0);
  EXPECT_EQ(Import(pipe).reason, "This is a folder or a device and no file. Choose a sound file.");
  close(reader);
  close(writer);
}
#endif

}  // namespace
}  // namespace kestrin::platform::audio
