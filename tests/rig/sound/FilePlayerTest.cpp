// SPDX-License-Identifier: MIT
#include "core/sound/FilePlayer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "core/sound/LSU_SoundFile.h"
#include "core/sound/WavFile.h"
#include "platform/speaker/SystemSoundOutput.h"
#include "rig/sound/StreamFixture.h"
#include "support/PrivateSoundService.h"
#include "support/TestFiles.h"

namespace kestrin::rig {
namespace {

using core::sound::FilePlayer;
using support::PrivateSoundService;

/// Files through the system's own loudspeaker.
class FilePlayerTest : public testing::Test {
 protected:
  /// A preview file with these samples.
  std::filesystem::path Wav(std::span<const std::int16_t> samples) {
    core::sound::LSU_SoundFile file;
    EXPECT_TRUE(file.ReadFile(support::WriteSoundFile(m_folder / "sound.lsu", samples)));
    EXPECT_TRUE(file.WriteWav(m_folder / "temp.wav"));
    return m_folder / "temp.wav";
  }
  bool IsOver() {
    return Until([this] { return !m_player.Look().playing; });
  }

  support::TemporaryFolder m_folder;
  FilePlayer m_player{platform::speaker::MakeSystemSoundOutput(platform::speaker::kFileBuffer)};
};

TEST_F(FilePlayerTest, PlaysEverySampleToTheLastAndThenSaysSo) {
  const PrivateSoundService service;
  // The first is shorter than any buffer.
  for (const std::size_t count : {49U, 2400U, 48000U}) {
    const StreamSamples samples = LoudSamples(count);
    StreamSamples heard;
    // A computer that is busy with other things for longer than the service's buffer lasts has gaps, whoever plays.
    for (int attempt = 0; attempt < 5 && heard != samples; ++attempt) {
      PrivateSoundService::Recorder recorder;
      m_player.Play(Wav(samples));
      std::filesystem::remove(m_folder / "temp.wav");
      heard = recorder.Hear(count);
      EXPECT_TRUE(IsOver());
      EXPECT_EQ(m_player.Look().ended.Text(), "");
    }
    EXPECT_EQ(heard, samples) << count;
  }
}

TEST_F(FilePlayerTest, StopsAtOnceAndPlaysTheNext) {
  const PrivateSoundService service;
  m_player.Play(Wav(LoudSamples(480000)));
  EXPECT_TRUE(m_player.Look().playing);
  m_player.Stop();
  EXPECT_FALSE(m_player.Look().playing);
  EXPECT_EQ(m_player.Look().ended.Text(), "");
  m_player.Play(Wav(LoudSamples(100)));
  EXPECT_TRUE(IsOver());
  EXPECT_EQ(m_player.Look().ended.Text(), "");
}

TEST_F(FilePlayerTest, SaysThatThereIsNoSoundService) {
  setenv("PULSE_SERVER", "unix:/nonexistent/nobody", 1);
  m_player.Play(Wav(LoudSamples(100)));
  EXPECT_TRUE(IsOver());
  EXPECT_NE(m_player.Look().ended.Text().find("No sound service answers"), std::string::npos);
}

/// The bytes that this thread has read of files.
std::uint64_t BytesReadHere() {
  std::ifstream counts("/proc/thread-self/io");
  std::string name;
  std::uint64_t number = 0;
  while (counts >> name >> number)
    if (name == "rchar:") return number;
  ADD_FAILURE() << "this system does not count what a thread reads";
  return 0;
}

TEST_F(FilePlayerTest, ReadsTheFileBesideWhoeverPlaysIt) {
  setenv("PULSE_SERVER", "unix:/nonexistent/nobody", 1);
  const auto large = Wav(LoudSamples(100));
  std::string bytes = support::ReadBytes(large);
  // Where the header tells the size of the samples, the least significant byte first: 2^24.
  bytes.replace(40, 4, std::string("\0\0\0\1", 4));
  support::WriteBytes(large, bytes);
  std::filesystem::resize_file(large, 44 + (1 << 24));
  std::uint64_t before = BytesReadHere();
  EXPECT_TRUE(core::sound::WavFile::Read(large));
  EXPECT_GE(BytesReadHere() - before, 1U << 24) << "it is counted";
  before = BytesReadHere();
  m_player.Play(large);
  EXPECT_TRUE(IsOver());
  EXPECT_LT(BytesReadHere() - before, 1U << 20);
  // It was read to its end, so that the service was looked for.
  EXPECT_NE(m_player.Look().ended.Text().find("No sound service answers"), std::string::npos);
}

}  // namespace
}  // namespace kestrin::rig
