// SPDX-License-Identifier: MIT
#include "platform/desktop/WaveOutPlayer.h"

#include <gtest/gtest.h>
#include <windows.h>
// After the line above, which it needs.
#include <mmsystem.h>

#include <chrono>
#include <functional>
#include <thread>

#include "core/sound/LSU_SoundFile.h"
#include "support/TestFiles.h"

namespace kestrin::support {
namespace {

using platform::desktop::WaveOutPlayer;

/// Looks until `condition` holds; false when that takes too long.
bool Until(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

class WaveOutPlayerTest : public testing::Test {
 protected:
  std::filesystem::path Wav(std::size_t samples) {
    core::sound::LSU_SoundFile file;
    EXPECT_TRUE(file.ReadFile(WriteSoundFile(m_folder / "sound.lsu", SomeSamples(samples))));
    EXPECT_TRUE(file.WriteWav(m_folder / "temp.wav"));
    return m_folder / "temp.wav";
  }

  TemporaryFolder m_folder;
};

TEST_F(WaveOutPlayerTest, HasNothingToSayBeforeAnything) {
  WaveOutPlayer player;
  player.Stop();
  EXPECT_FALSE(player.Look().playing);
  EXPECT_TRUE(player.Look().ended);
}

TEST_F(WaveOutPlayerTest, SaysThatTheFileCannotBeRead) {
  WaveOutPlayer player;
  player.Play(m_folder / "temp.wav");
  EXPECT_FALSE(player.Look().playing);
  EXPECT_NE(player.Look().ended.Text().find("temp.wav"), std::string::npos);
}

TEST_F(WaveOutPlayerTest, SaysThatTheFileIsNoSound) {
  WaveOutPlayer player;
  player.Play(WriteBytes(m_folder / "temp.wav", "Dear Sir"));
  EXPECT_TRUE(Until([&player] { return !player.Look().playing; }));
  EXPECT_NE(player.Look().ended.Text().find("temp.wav"), std::string::npos);
}

TEST_F(WaveOutPlayerTest, EndsByItselfOrSaysThatNothingIsThereToPlayOn) {
  WaveOutPlayer player;
  player.Play(Wav(100));
  EXPECT_TRUE(Until([&player] { return !player.Look().playing; }));
  if (waveOutGetNumDevs() == 0)
    EXPECT_EQ(player.Look().ended.Text(),
              "Windows has no sound output to play on. Connect a loudspeaker and play the sound again.");
  else
    EXPECT_EQ(player.Look().ended.Text(), "");
}

TEST_F(WaveOutPlayerTest, StopsAtOnceAndSaysNothingOfIt) {
  WaveOutPlayer player;
  // Some minutes of it.
  player.Play(Wav(4'000'000));
  player.Stop();
  EXPECT_FALSE(player.Look().playing);
  EXPECT_EQ(player.Look().ended.Text(), "");
  player.Play(Wav(100));
  EXPECT_TRUE(Until([&player] { return !player.Look().playing; }));
}

}  // namespace
}  // namespace kestrin::support
