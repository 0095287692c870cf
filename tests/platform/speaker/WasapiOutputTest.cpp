// SPDX-License-Identifier: MIT
#include "platform/speaker/WasapiOutput.h"

#include <gtest/gtest.h>
#include <windows.h>
// After the line above, which it needs.
#include <mmsystem.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <span>
#include <thread>

#include "core/sound/FilePlayer.h"
#include "core/sound/LSU_SoundFile.h"
#include "platform/speaker/SystemSoundOutput.h"
#include "support/TestFiles.h"

namespace kestrin::support {
namespace {

using platform::speaker::WasapiOutput;

constexpr const char* kNoOutput = "Windows has no sound output to play on. Connect a loudspeaker and try again.";

/// Looks until `condition` holds; false when that takes too long.
bool Until(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

/// So many samples of a tone, and how many of them were taken.
struct Tone {
  std::int64_t length = 0;
  std::atomic<std::int64_t> given = 0;

  core::sound::SoundOutput::Source Source() {
    return [this](std::span<std::int16_t> out) {
      const auto count = static_cast<std::size_t>(
          std::clamp(length - given.load(), std::int64_t{0}, static_cast<std::int64_t>(out.size())));
      std::fill_n(out.begin(), count, std::int16_t{1000});
      given += static_cast<std::int64_t>(count);
      return count;
    };
  }
};

/// What comes of a sound that can be played: nothing to say, or that there is nothing to play on.
void ExpectEnded(const core::base::Result<>& ended) {
  EXPECT_EQ(ended.Text(), waveOutGetNumDevs() == 0 ? kNoOutput : "");
}

TEST(WasapiOutput, HasNothingToSayBeforeAnything) {
  WasapiOutput output(platform::speaker::kLiveBuffer);
  output.Stop();
  EXPECT_FALSE(output.Look().isPlaying);
  EXPECT_TRUE(output.Look().ended);
}

TEST(WasapiOutput, EndsByItselfOrSaysThatNothingIsThereToPlayOn) {
  for (const std::int64_t length : {100, 9600}) {
    Tone tone{length};
    WasapiOutput output(platform::speaker::kLiveBuffer);
    output.Start(tone.Source());
    EXPECT_TRUE(Until([&output] { return !output.Look().isPlaying; }));
    ExpectEnded(output.Look().ended);
    if (waveOutGetNumDevs() != 0) {
      EXPECT_EQ(tone.given, length);
    }
  }
}

TEST(WasapiOutput, StopsAtOnceAndAsksForNothingMore) {
  Tone tone{1'000'000'000};
  WasapiOutput output(platform::speaker::kLiveBuffer);
  for (int i = 0; i < 20; ++i) {
    output.Start(tone.Source());
    output.Stop();
    const std::int64_t given = tone.given;
    EXPECT_FALSE(output.Look().isPlaying);
    std::this_thread::yield();
    EXPECT_EQ(tone.given, given);
  }
}

/// Files through the system's own loudspeaker.
class WindowsPlayerTest : public testing::Test {
 protected:
  std::filesystem::path Wav(std::size_t samples) {
    core::sound::LSU_SoundFile file;
    EXPECT_TRUE(file.ReadFile(WriteSoundFile(m_folder / "sound.lsu", SomeSamples(samples))));
    EXPECT_TRUE(file.WriteWav(m_folder / "temp.wav"));
    return m_folder / "temp.wav";
  }

  TemporaryFolder m_folder;
  core::sound::FilePlayer m_player{platform::speaker::MakeSystemSoundOutput(platform::speaker::kFileBuffer)};
};

TEST_F(WindowsPlayerTest, EndsByItselfOrSaysThatNothingIsThereToPlayOn) {
  m_player.Play(Wav(100));
  EXPECT_TRUE(Until([this] { return !m_player.Look().playing; }));
  ExpectEnded(m_player.Look().ended);
}

TEST_F(WindowsPlayerTest, StopsAtOnceAndSaysNothingOfIt) {
  // Some minutes of it.
  m_player.Play(Wav(4'000'000));
  m_player.Stop();
  EXPECT_FALSE(m_player.Look().playing);
  EXPECT_EQ(m_player.Look().ended.Text(), "");
  m_player.Play(Wav(100));
  EXPECT_TRUE(Until([this] { return !m_player.Look().playing; }));
}

TEST_F(WindowsPlayerTest, TheFileCanBeReplacedAtOnce) {
  const auto wav = Wav(4'000'000);
  m_player.Play(wav);
  std::error_code error;
  std::filesystem::rename(WriteBytes(m_folder / "next.wav", "something else"), wav, error);
  EXPECT_FALSE(error) << error.message();
}

}  // namespace
}  // namespace kestrin::support
