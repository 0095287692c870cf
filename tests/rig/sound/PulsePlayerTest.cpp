// SPDX-License-Identifier: MIT
#include "platform/desktop/PulsePlayer.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "core/sound/LSU_SoundFile.h"
#include "platform/desktop/WavFile.h"
#include "support/FakeClock.h"
#include "support/PrivateSoundService.h"
#include "support/TestFiles.h"

namespace kestrin::support {
namespace {

using platform::desktop::PulsePlayer;
using std::chrono::seconds;
using std::chrono::steady_clock;

/// Looks until `condition` holds; false when that takes too long.
bool Until(const std::function<bool()>& condition) {
  const auto end = steady_clock::now() + seconds(20);
  while (!condition()) {
    if (steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

class PulsePlayerTest : public testing::Test {
 protected:
  /// A preview file with these samples.
  std::filesystem::path Wav(std::span<const std::int16_t> samples) {
    core::sound::LSU_SoundFile file;
    EXPECT_TRUE(file.ReadFile(support::WriteSoundFile(folder / "sound.lsu", samples)));
    EXPECT_TRUE(file.WriteWav(folder / "temp.wav"));
    return folder / "temp.wav";
  }

  support::TemporaryFolder folder;
  support::FakeClock clock;
};

/// Samples of which neither the first nor the last is silent.
std::vector<std::int16_t> LoudSamples(std::size_t count) {
  auto samples = support::SomeSamples(count);
  samples.front() = 1234;
  samples.back() = -4321;
  return samples;
}

TEST_F(PulsePlayerTest, PlaysEverySampleToTheLastAndThenSaysSo) {
  const PrivateSoundService service;
  // The first is shorter than any buffer.
  for (const std::size_t count : {49U, 2400U, 48000U}) {
    const auto samples = LoudSamples(count);
    std::vector<std::int16_t> heard;
    // A computer that is busy with other things for longer than the service's buffer lasts has gaps, whoever plays.
    for (int attempt = 0; attempt < 5 && heard != samples; ++attempt) {
      PrivateSoundService::Recorder recorder;
      PulsePlayer player(clock);
      player.Play(Wav(samples));
      std::filesystem::remove(folder / "temp.wav");
      heard = recorder.Hear(count);
      EXPECT_TRUE(Until([&player] { return !player.Look().playing; }));
      EXPECT_EQ(player.Look().ended.Text(), "");
    }
    EXPECT_EQ(heard, samples) << count;
  }
}

TEST_F(PulsePlayerTest, StopsAtOnceAndPlaysTheNext) {
  const PrivateSoundService service;
  PulsePlayer player(clock);
  player.Play(Wav(LoudSamples(480000)));
  EXPECT_TRUE(player.Look().playing);
  player.Stop();
  EXPECT_FALSE(player.Look().playing);
  EXPECT_EQ(player.Look().ended.Text(), "");
  player.Play(Wav(LoudSamples(100)));
  EXPECT_TRUE(Until([&player] { return !player.Look().playing; }));
  EXPECT_EQ(player.Look().ended.Text(), "");
}

TEST_F(PulsePlayerTest, SaysThatThereIsNoSoundService) {
  setenv("PULSE_SERVER", "unix:/nonexistent/nobody", 1);
  PulsePlayer player(clock);
  player.Play(Wav(LoudSamples(100)));
  EXPECT_TRUE(Until([&player] { return !player.Look().playing; }));
  EXPECT_NE(player.Look().ended.Text().find("No sound service answers"), std::string::npos);
}

TEST_F(PulsePlayerTest, GivesUpAServiceThatDoesNotAnswerAndDoesNotHoldUpTheEnd) {
  // Takes connections and says nothing.
  const std::string path = testing::TempDir() + "kestrin-deaf-" + std::to_string(getpid());
  const int server = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  ASSERT_LT(path.size(), sizeof address.sun_path);
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(listen(server, 5), 0);
  setenv("PULSE_SERVER", ("unix:" + path).c_str(), 1);
  // A player that waits for the service at its end keeps this test from ending.
  {
    PulsePlayer player(clock);
    player.Play(Wav(LoudSamples(100)));
    EXPECT_TRUE(player.Look().playing);
    // Patience begins when the file has been read.
    EXPECT_TRUE(Until([&] {
      clock.Advance(PulsePlayer::kPatience + std::chrono::milliseconds(1));
      return !player.Look().playing;
    }));
    EXPECT_NE(player.Look().ended.Text().find("No sound service answers"), std::string::npos);
  }
  close(server);
  unlink(path.c_str());
}

TEST_F(PulsePlayerTest, SaysThatTheFileCannotBeRead) {
  PulsePlayer player(clock);
  player.Play(folder / "temp.wav");
  EXPECT_FALSE(player.Look().playing);
  EXPECT_NE(player.Look().ended.Text().find("temp.wav"), std::string::npos);
}

TEST_F(PulsePlayerTest, SaysThatTheFileIsNoSound) {
  PulsePlayer player(clock);
  player.Play(support::WriteBytes(folder / "temp.wav", "Dear Sir"));
  EXPECT_TRUE(Until([&player] { return !player.Look().playing; }));
  EXPECT_NE(player.Look().ended.Text().find("temp.wav"), std::string::npos);
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

TEST_F(PulsePlayerTest, ReadsTheFileBesideWhoeverPlaysIt) {
  setenv("PULSE_SERVER", "unix:/nonexistent/nobody", 1);
  const auto large = Wav(LoudSamples(100));
  std::string bytes = support::ReadBytes(large);
  // Where the header tells the size of the samples, the least significant byte first: 2^24.
  bytes.replace(40, 4, std::string("\0\0\0\1", 4));
  support::WriteBytes(large, bytes);
  std::filesystem::resize_file(large, 44 + (1 << 24));
  std::uint64_t before = BytesReadHere();
  EXPECT_TRUE(platform::desktop::WavFile::Read(large));
  EXPECT_GE(BytesReadHere() - before, 1U << 24) << "it is counted";
  before = BytesReadHere();
  PulsePlayer player(clock);
  player.Play(large);
  EXPECT_TRUE(Until([&player] { return !player.Look().playing; }));
  EXPECT_LT(BytesReadHere() - before, 1U << 20);
  // It was read to its end, so that the service was looked for.
  EXPECT_NE(player.Look().ended.Text().find("No sound service answers"), std::string::npos);
}

TEST_F(PulsePlayerTest, HasNothingToSayBeforeAnything) {
  PulsePlayer player(clock);
  player.Stop();
  EXPECT_FALSE(player.Look().playing);
  EXPECT_EQ(player.Look().ended.Text(), "");
}

}  // namespace
}  // namespace kestrin::support
